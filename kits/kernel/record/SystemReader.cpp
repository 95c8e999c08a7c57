// SPDX-License-Identifier: MIT
#include "kits/kernel/record/SystemReader.h"

#include "kits/kernel/ProcText.h"
#include "kits/kernel/record/MachineTexts.h"

#include <sys/sem.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kits {

namespace {

constexpr size_t kBytesPerProcessor = 216; ///< of a line in `/proc/stat`, with its ten numbers at their longest
constexpr size_t kWholeFile = 1 << 20;
constexpr size_t kSmallestBuffer = 16384;
constexpr size_t kLongestLine = 64;
constexpr uint64 kKilobytesPerPage = 4;

void SetFigure(int32* figure, std::optional<uint64> value)
{
    if (value.has_value())
        *figure = static_cast<int32>(std::min<uint64>(*value, INT32_MAX));
}

int64 PagesOf(uint64 kilobytes)
{
    return static_cast<int64>(std::min<uint64>(kilobytes / kKilobytesPerPage, kMaxPages));
}

/// Reads all of a file at once, as far as it is useful.
std::string ReadWhole(const std::string& path)
{
    // Not filled with zeros: that would take longer than all the reading here, and most of the buffer is never touched.
    const auto buffer = std::make_unique_for_overwrite<char[]>(kWholeFile);
    ProcFile file(path, {buffer.get(), kWholeFile});
    std::string text(file.Read());
    while (true) {
        const std::string_view more = file.ReadOn();
        if (more.empty())
            return text;
        text = more;
    }
}

std::string FirstLine(const std::string& path)
{
    const std::string text = ReadWhole(path);
    return text.substr(0, text.find('\n'));
}

size_t ProcessorCountOf(const std::string& root, std::string_view statText)
{
    std::vector<ProcessorTime> times(kMaxProcessors);
    const size_t count = ParseProcessorTimes(statText, times, nullptr);
    uint64 highest = 0;
    for (size_t i = 0; i < count; ++i)
        highest = std::max(highest, static_cast<uint64>(times[i].index));
    if (count == 0)
        highest = ParseHighestProcessor(ReadWhole(root + "sys/devices/system/cpu/online")).value_or(0);
    return static_cast<size_t>(std::min<uint64>(highest, kMaxProcessors - 1)) + 1;
}

} // namespace

SystemReader::SystemReader(const char* root)
    : SystemReader(RootFolder(root), ReadWhole(RootFolder(root) + "proc/stat"))
{
}

SystemReader::SystemReader(const std::string& root, const std::string& statText)
    : fActiveClock(ProcessorCountOf(root, statText))
    , fTimes(fActiveClock.CountProcessors() + 1)
    , fBuffer(std::max((fActiveClock.CountProcessors() + 2) * kBytesPerProcessor, kSmallestBuffer))
    , fStat(root + "proc/stat", fBuffer)
    , fMemInfo(root + "proc/meminfo", fBuffer)
    , fVmStat(root + "proc/vmstat", fBuffer)
    , fLoadAvg(root + "proc/loadavg", fBuffer)
    , fSockStat(root + "proc/net/sockstat", fBuffer)
    , fProcesses(root + "proc", root != "/")
    , fLimitReader(root)
{
    if (root != "/")
        fSemaphores.emplace(root + "proc/sysvipc/sem", fBuffer);
    const std::string name =
        FirstLine(root + "proc/sys/kernel/ostype") + ' ' + FirstLine(root + "proc/sys/kernel/osrelease");
    name.copy(fInfo.kernel_name, sizeof(fInfo.kernel_name) - 1);
    const uint64 bootSecond = std::min<uint64>(NumberAfter(statText, "btime ").value_or(0), INT64_MAX / kSecond);
    fInfo.boot_time = static_cast<bigtime_t>(bootSecond) * kSecond;
    fInfo.cpu_count = static_cast<int32>(fActiveClock.CountProcessors());
    fInfo.max_pages = 1;
}

void SystemReader::Read(bigtime_t now, system_info* info, bigtime_t* activeTimes, int32 capacity)
{
    ReadLimits(now);
    ReadProcessors(now);
    ReadMemory();
    ReadCounts();
    SetMaxima();
    *info = fInfo;
    const size_t count = std::min(static_cast<size_t>(std::max(capacity, 0)), fActiveClock.CountProcessors());
    for (size_t i = 0; i < count; ++i)
        activeTimes[i] = fActiveClock.ActiveTime(i);
}

void SystemReader::ReadProcessors(bigtime_t now)
{
    bool isWhole = false;
    std::string_view text = fStat.Read();
    size_t count = ParseProcessorTimes(text, fTimes, &isWhole);
    while (!isWhole && !(text = fStat.ReadOn()).empty())
        count = ParseProcessorTimes(text, fTimes, &isWhole);
    fActiveClock.Update(now, std::span(fTimes).first(count));
    const size_t inRecord = std::min<size_t>(fActiveClock.CountProcessors(), B_MAX_CPU_COUNT);
    for (size_t i = 0; i < inRecord; ++i)
        fInfo.cpu_infos[i].active_time = fActiveClock.ActiveTime(i);
}

void SystemReader::ReadMemory()
{
    const MemoryTexts memory = ParseMemInfo(fMemInfo.Read());
    if (memory.total.has_value()) {
        fMaxPages = std::max<int64>(PagesOf(*memory.total), 1);
        if (memory.available.has_value())
            fUsedPages = PagesOf(*memory.total - std::min(*memory.available, *memory.total));
        fUsedPages = std::min(fUsedPages, fMaxPages);
        SetFigure(&fInfo.max_pages, static_cast<uint64>(fMaxPages));
        SetFigure(&fInfo.used_pages, static_cast<uint64>(fUsedPages));
    }

    // The kernel generates this long file only as far as it is read, and half of it is enough.
    std::string_view text = fPageFaultsHint != 0 ? fVmStat.Read(fPageFaultsHint + 2 * kLongestLine) : fVmStat.Read();
    auto pageFaults = ParsePageFaults(text, &fPageFaultsHint);
    while (!pageFaults.has_value() && !(text = fVmStat.ReadOn()).empty())
        pageFaults = ParsePageFaults(text, &fPageFaultsHint);
    if (pageFaults.has_value())
        fInfo.page_faults = static_cast<int32>(static_cast<uint32>(*pageFaults));
}

void SystemReader::ReadCounts()
{
    SetFigure(&fInfo.used_threads, ParseThreadCount(fLoadAvg.Read()));
    SetFigure(&fInfo.used_ports, NumberAfter(fSockStat.Read(), "sockets: used "));
    SetFigure(&fInfo.used_teams, fProcesses.Count());
    if (fSemaphores.has_value()) {
        SetFigure(&fInfo.used_sems, ParseSemCount(fSemaphores->Read()));
    } else {
        seminfo figures;
        if (semctl(0, 0, SEM_INFO, &figures) >= 0)
            fInfo.used_sems = std::max(figures.semaem, 0);
    }
}

void SystemReader::ReadLimits(bigtime_t now)
{
    if (fEachMinute.IsDue(now)) {
        fProcesses.Calibrate();
        fLimitReader.FindFiles();
    }
    if (fEachSecond.IsDue(now)) {
        for (ProcFile* file : {&fStat, &fMemInfo, &fVmStat, &fLoadAvg, &fSockStat})
            file->Reopen();
        if (fSemaphores.has_value())
            fSemaphores->Reopen();
    }
    if (!fLimitsDue.IsDue(now))
        return;
    fLimitReader.Read(&fLimits);
}

void SystemReader::SetMaxima()
{
    // A limit applies to one user, the number in use covers all users.
    fInfo.max_teams = std::max(static_cast<int32>(fLimits.teams), +fInfo.used_teams);
    fInfo.max_threads = std::max(static_cast<int32>(fLimits.threads), +fInfo.used_threads);
    fInfo.max_sems = std::max(static_cast<int32>(fLimits.sems), +fInfo.used_sems);
    fInfo.max_ports = std::max(static_cast<int32>(fLimits.ports), +fInfo.used_ports);
}

void SystemReader::GetFigures(SystemFigures* figures) const
{
    figures->activeUntil = fActiveClock.LastTime();
    figures->maxPages = fMaxPages;
    figures->usedPages = fUsedPages;
}

} // namespace kits
