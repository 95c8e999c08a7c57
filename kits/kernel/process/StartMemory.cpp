// SPDX-License-Identifier: MIT
#include "kits/kernel/StartMemory.h"

#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace kits {

namespace {

/// Returns whether the dynamic linker has written into a library's code: then its pages differ from the file's.
bool HasWrittenCode(const dl_phdr_info& info)
{
    for (int i = 0; i < info.dlpi_phnum; i++) {
        const ElfW(Phdr)& segment = info.dlpi_phdr[i];
        if (segment.p_type != PT_DYNAMIC)
            continue;
        for (const auto* entry = reinterpret_cast<const ElfW(Dyn)*>(info.dlpi_addr + segment.p_vaddr);
             entry->d_tag != DT_NULL; entry++)
            if (entry->d_tag == DT_TEXTREL || (entry->d_tag == DT_FLAGS && (entry->d_un.d_val & DF_TEXTREL) != 0))
                return true;
    }
    return false;
}

int GiveBack(dl_phdr_info* info, size_t, void*)
{
    if (HasWrittenCode(*info))
        return 0;
    const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
    for (int i = 0; i < info->dlpi_phnum; i++) {
        const ElfW(Phdr)& segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0)
            continue;
        const uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
        // Whole pages only: the last one may be shared with a segment that is written to.
        const uintptr_t first = begin / page * page;
        const uintptr_t end = (begin + segment.p_filesz) / page * page;
        if (end > first)
            madvise(reinterpret_cast<void*>(first), end - first, MADV_DONTNEED);
    }
    return 0;
}

} // namespace

void GiveBackStartMemory()
{
    malloc_trim(0);
    dl_iterate_phdr(GiveBack, nullptr);
}

} // namespace kits
