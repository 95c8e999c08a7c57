// SPDX-License-Identifier: MIT
#include "kits/kernel/record/MachineLimits.h"

#include "kits/kernel/ProcText.h"
#include "kits/kernel/record/MachineTexts.h"

#include <algorithm>
#include <optional>

namespace kits {

namespace {

constexpr uint64 kMostSems = 32000;
constexpr uint64 kMostPorts = 65536;

std::optional<uint64> Lowest(std::optional<uint64> a, std::optional<uint64> b)
{
    if (!a.has_value() || !b.has_value())
        return a.has_value() ? a : b;
    return std::min(*a, *b);
}

void SetLimit(int64* limit, std::optional<uint64> value, uint64 most)
{
    if (value.has_value())
        *limit = static_cast<int64>(std::clamp<uint64>(*value, 1, most));
}

} // namespace

LimitReader::LimitReader(const std::string& root)
    : fRoot(root)
    , fPidMax{ProcFile(root + "proc/sys/kernel/pid_max", fBuffer)}
    , fThreadsMax{ProcFile(root + "proc/sys/kernel/threads-max", fBuffer)}
    , fFileMax(root + "proc/sys/fs/file-max", fBuffer)
    , fSem(root + "proc/sys/kernel/sem", fBuffer)
    , fProcessLimits(root + "proc/self/limits", fBuffer)
    , fStatus(root + "proc/self/status", fBuffer)
    , fGroups(root + "proc/self/cgroup", fBuffer)
{
}

std::optional<uint64> LimitReader::Kept::Read()
{
    if (const auto found = FirstNumber(file.Read()))
        number = found;
    return number;
}

void LimitReader::FindFiles()
{
    for (ProcFile* file : {&fPidMax.file, &fThreadsMax.file, &fFileMax, &fSem, &fProcessLimits, &fStatus, &fGroups})
        file->Reopen();
    for (ProcFile& file : fPidsMax)
        file.Reopen();
    if (const std::string_view groups = fGroups.Read(); groups != fLastGroups) {
        fLastGroups = groups;
        FindGroups();
    }
}

void LimitReader::FindGroups()
{
    fPidsMax.clear();
    const auto group = ParsePidsGroup(fLastGroups);
    if (!group.has_value())
        return;
    const std::string mounted = fRoot + "sys/fs/cgroup";
    for (std::string path = group->path; path.size() > 1; path.resize(path.rfind('/'))) {
        if (group->isUnified) {
            fPidsMax.emplace_back(mounted + path + "/pids.max", fBuffer);
            fPidsMax.emplace_back(mounted + "/unified" + path + "/pids.max", fBuffer);
        } else {
            fPidsMax.emplace_back(mounted + "/pids" + path + "/pids.max", fBuffer);
        }
    }
}

void LimitReader::Read(MachineLimits* limits)
{
    auto teams = fPidMax.Read();
    for (ProcFile& file : fPidsMax)
        teams = Lowest(teams, FirstNumber(file.Read()));
    // The first numbers are the real user and the soft limit; "unlimited" is none. A user's limit does not apply to
    // root.
    if (NumberAfter(fStatus.Read(), "Uid:") != std::optional<uint64>(0))
        teams = Lowest(teams, NumberAfter(fProcessLimits.Read(), "Max processes "));
    const auto threads = Lowest(teams, fThreadsMax.Read());

    SetLimit(&limits->teams, teams, INT32_MAX);
    SetLimit(&limits->threads, threads, INT32_MAX);
    SetLimit(&limits->sems, ParseLargestSemCount(fSem.Read()), kMostSems);
    SetLimit(&limits->ports, FirstNumber(fFileMax.Read()), kMostPorts);
}

} // namespace kits
