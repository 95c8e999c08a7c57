// SPDX-License-Identifier: MIT
#include "kits/kernel/record/SystemReader.h"

#include "kits/kernel/ProcText.h"
#include "kits/kernel/record/ActiveClock.h"
#include "kits/kernel/record/MachineLimits.h"
#include "kits/kernel/record/MachineTexts.h"
#include "kits/kernel/record/ProcFile.h"
#include "kits/kernel/record/ProcessCounter.h"

#include <sys/sem.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace kits {

namespace {

constexpr bigtime_t kSecond = 1000000;
constexpr bigtime_t kMinute = 60 * kSecond;
// Limits hardly ever change, and reading one of their files costs as much as reading a file of figures.
constexpr bigtime_t kBetweenLimits = 10 * kSecond;
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

/// Decides whether to repeat an action after a time; a clock that goes back is no reason to wait.
class Interval {
public:
    explicit Interval(bigtime_t length)
        : fLength(length)
    {
    }
    bool IsDue(bigtime_t now)
    {
        if (fLast.has_value() && now >= *fLast && static_cast<uint64>(now) - static_cast<uint64>(*fLast) < fLength)
            return false;
        fLast = now;
        return true;
    }

private:
    const uint64 fLength;
    std::optional<bigtime_t> fLast;
};

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

class SystemReader::Implementation {
public:
    Implementation(const std::string& root, bool isRecorded);

    size_t CountProcessors() const { return fActiveClock.CountProcessors(); }
    void Read(bigtime_t now);

    system_info info{};
    int64 maxPages = 1;
    int64 usedPages = 0;
    const ActiveClock& Clock() const { return fActiveClock; }

private:
    Implementation(const std::string& root, bool isRecorded, const std::string& statText);
    void ReadProcessors(bigtime_t now);
    void ReadMemory();
    void ReadCounts();
    void ReadLimits(bigtime_t now);
    void SetMaxima();

    ActiveClock fActiveClock;
    std::vector<ProcessorTime> fTimes;
    std::vector<char> fBuffer; ///< shared by all files
    ProcFile fStat;
    ProcFile fMemInfo;
    ProcFile fVmStat;
    ProcFile fLoadAvg;
    ProcFile fSockStat;
    std::optional<ProcFile> fSemaphores; ///< a recorded machine's; this machine's are queried
    ProcessCounter fProcesses;
    LimitReader fLimitReader;
    MachineLimits fLimits;
    Interval fEachSecond{kSecond};
    Interval fLimitsDue{kBetweenLimits};
    Interval fEachMinute{kMinute};
    size_t fPageFaultsHint = 0;
};

SystemReader::Implementation::Implementation(const std::string& root, bool isRecorded)
    : Implementation(root, isRecorded, ReadWhole(root + "proc/stat"))
{
}

SystemReader::Implementation::Implementation(const std::string& root, bool isRecorded, const std::string& statText)
    : fActiveClock(ProcessorCountOf(root, statText))
    , fTimes(fActiveClock.CountProcessors() + 1)
    , fBuffer(std::max((fActiveClock.CountProcessors() + 2) * kBytesPerProcessor, kSmallestBuffer))
    , fStat(root + "proc/stat", fBuffer)
    , fMemInfo(root + "proc/meminfo", fBuffer)
    , fVmStat(root + "proc/vmstat", fBuffer)
    , fLoadAvg(root + "proc/loadavg", fBuffer)
    , fSockStat(root + "proc/net/sockstat", fBuffer)
    , fProcesses(root + "proc", isRecorded)
    , fLimitReader(root)
{
    if (isRecorded)
        fSemaphores.emplace(root + "proc/sysvipc/sem", fBuffer);
    const std::string name =
        FirstLine(root + "proc/sys/kernel/ostype") + ' ' + FirstLine(root + "proc/sys/kernel/osrelease");
    name.copy(info.kernel_name, sizeof(info.kernel_name) - 1);
    const uint64 bootSecond = std::min<uint64>(NumberAfter(statText, "btime ").value_or(0), INT64_MAX / kSecond);
    info.boot_time = static_cast<bigtime_t>(bootSecond) * kSecond;
    info.cpu_count = static_cast<int32>(fActiveClock.CountProcessors());
    info.max_pages = 1;
}

void SystemReader::Implementation::Read(bigtime_t now)
{
    ReadLimits(now);
    ReadProcessors(now);
    ReadMemory();
    ReadCounts();
    SetMaxima();
}

void SystemReader::Implementation::ReadProcessors(bigtime_t now)
{
    bool isWhole = false;
    std::string_view text = fStat.Read();
    size_t count = ParseProcessorTimes(text, fTimes, &isWhole);
    while (!isWhole && !(text = fStat.ReadOn()).empty())
        count = ParseProcessorTimes(text, fTimes, &isWhole);
    fActiveClock.Update(now, std::span(fTimes).first(count));
    const size_t inRecord = std::min<size_t>(fActiveClock.CountProcessors(), B_MAX_CPU_COUNT);
    for (size_t i = 0; i < inRecord; ++i)
        info.cpu_infos[i].active_time = fActiveClock.ActiveTime(i);
}

void SystemReader::Implementation::ReadMemory()
{
    const MemoryTexts memory = ParseMemInfo(fMemInfo.Read());
    if (memory.total.has_value()) {
        maxPages = std::max<int64>(PagesOf(*memory.total), 1);
        if (memory.available.has_value())
            usedPages = PagesOf(*memory.total - std::min(*memory.available, *memory.total));
        usedPages = std::min(usedPages, maxPages);
        SetFigure(&info.max_pages, static_cast<uint64>(maxPages));
        SetFigure(&info.used_pages, static_cast<uint64>(usedPages));
    }

    // The kernel generates this long file only as far as it is read, and half of it is enough.
    std::string_view text = fPageFaultsHint != 0 ? fVmStat.Read(fPageFaultsHint + 2 * kLongestLine) : fVmStat.Read();
    auto pageFaults = ParsePageFaults(text, &fPageFaultsHint);
    while (!pageFaults.has_value() && !(text = fVmStat.ReadOn()).empty())
        pageFaults = ParsePageFaults(text, &fPageFaultsHint);
    if (pageFaults.has_value())
        info.page_faults = static_cast<int32>(static_cast<uint32>(*pageFaults));
}

void SystemReader::Implementation::ReadCounts()
{
    SetFigure(&info.used_threads, ParseThreadCount(fLoadAvg.Read()));
    SetFigure(&info.used_ports, ParseSocketCount(fSockStat.Read()));
    SetFigure(&info.used_teams, fProcesses.Count());
    if (fSemaphores.has_value()) {
        SetFigure(&info.used_sems, ParseSemCount(fSemaphores->Read()));
    } else {
        seminfo figures;
        if (semctl(0, 0, SEM_INFO, &figures) >= 0)
            info.used_sems = std::max(figures.semaem, 0);
    }
}

void SystemReader::Implementation::ReadLimits(bigtime_t now)
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

void SystemReader::Implementation::SetMaxima()
{
    // A limit applies to one user, the number in use covers all users.
    info.max_teams = std::max(static_cast<int32>(fLimits.teams), +info.used_teams);
    info.max_threads = std::max(static_cast<int32>(fLimits.threads), +info.used_threads);
    info.max_sems = std::max(static_cast<int32>(fLimits.sems), +info.used_sems);
    info.max_ports = std::max(static_cast<int32>(fLimits.ports), +info.used_ports);
}

SystemReader::SystemReader(const char* root)
{
    const std::string folder = RootFolder(root);
    fImplementation = std::make_unique<Implementation>(folder, folder != "/");
}

SystemReader::~SystemReader() = default;

void SystemReader::Read(bigtime_t now, system_info* info, bigtime_t* activeTimes, int32 capacity)
{
    fImplementation->Read(now);
    *info = fImplementation->info;
    const ActiveClock& clock = fImplementation->Clock();
    const size_t count = std::min(static_cast<size_t>(std::max(capacity, 0)), clock.CountProcessors());
    for (size_t i = 0; i < count; ++i)
        activeTimes[i] = clock.ActiveTime(i);
}

void SystemReader::GetFigures(SystemFigures* figures) const
{
    figures->activeUntil = fImplementation->Clock().LastTime();
    figures->maxPages = fImplementation->maxPages;
    figures->usedPages = fImplementation->usedPages;
}

} // namespace kits
