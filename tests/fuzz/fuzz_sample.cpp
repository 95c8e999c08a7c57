// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/support/TypeConstants.h"
#include "src/sampling/SampleRecords.h"
#include "src/sampling/Source.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/SysinfoNode.h"
#include "src/sampling/ValueProvider.h"
#include "tests/fuzz/Fuzz.h"

#include <cmath>

// A sample of another process, with any bytes in its records.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    BMessage message;
    const RecordField* const fields[] = {&kSysinfoBodyField,  &kNodeBodyField, &kSumActiveField,
                                         &kActiveDeltasField, &kMemoryField,   &kMoreField};
    const size_t sizes[] = {sizeof(SysinfoBody), sizeof(SysinfoNodeBody)};
    for (size_t i = 0; i < std::size(fields) && size > 0; i++) {
        // A byte before each record says by how much its size is wrong.
        const size_t wanted = i < std::size(sizes)         ? sizes[i] + data[0]
                              : fields[i] == &kMemoryField ? sizeof(MemoryBody) + data[0] % 2
                                                           : 4 * static_cast<size_t>(data[0]);
        data++;
        size--;
        const size_t length = std::min(wanted, size);
        if (length > 0)
            message.AddData(fields[i]->Name(), B_RAW_TYPE, data, static_cast<ssize_t>(length));
        data += length;
        size -= length;
    }
    Sysinfo sampler(&message);
    SysinfoNode newest(&message);
    if (sampler.InitCheck() != B_OK || newest.InitCheck() != B_OK)
        return 0;
    for (vptarget_t target = VP_FIRST_CPU_IDLE; IsKnownSource(target);
         target += target < VP_FIRST_CPU + 40 || target >= VP_LAST_CPU_TARGET - 3 ? 1 : 101) {
        for (int32 flags = 0; flags <= (VP_AVERAGE | VP_EXP_AVERAGE); flags++) {
            ValueProvider provider(target, flags);
            const double share = provider.Value(&sampler, &newest);
            Expect(std::isfinite(share) && share <= 1);
            char text[ValueProvider::kValueStringLength];
            provider.GetValueString(text, &sampler, &newest);
            Expect(std::memchr(text, 0, sizeof(text)) != nullptr);
        }
    }
    BMessage again;
    sampler.GhostArchive(&again);
    newest.GhostArchive(&again);
    return 0;
}
