// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "src/sampling/SampleRecords.h"
#include "src/sampling/ValueProvider.h"
#include "src/support/MessageCodes.h"

/// Samples with chosen values, for tests and benchmarks of charts.

/// The sources for which the samples below have values, in the order of Shares.
inline constexpr vptarget_t kTestTargets[] = {VP_USED_MEMORY, VP_ALLOCATED_TEAMS, VP_ALLOCATED_THREADS,
                                              VP_ALLOCATED_SEMS, VP_ALLOCATED_PORTS};

/// Thousandths for each of the sources above.
struct Shares {
    int32 memory = 0;
    int32 teams = 0;
    int32 threads = 0;
    int32 sems = 0;
    int32 ports = 0;
};

/// Returns a sample as a sampler in another process sends it.
inline BMessage SampleMessage(const Shares& shares)
{
    system_info info{};
    info.cpu_count = 1;
    info.max_pages = info.max_teams = info.max_threads = info.max_sems = info.max_ports = 1000;
    info.used_pages = shares.memory;
    info.used_teams = shares.teams;
    info.used_threads = shares.threads;
    info.used_sems = shares.sems;
    info.used_ports = shares.ports;
    SysinfoBody sampler{};
    sampler.delay = 200000;
    sampler.sumElapsed = 200000;
    sampler.info = info;
    sampler.nodesToKeep = 10;
    SysinfoNodeBody node{};
    node.elapsed = 200000;
    node.info = info;

    BMessage message(MSG_SYSINFO_SAMPLE);
    AddRecord(&message, kSysinfoBodyField, &sampler, sizeof(sampler));
    AddTimes(&message, kSumActiveField, {0});
    AddRecord(&message, kNodeBodyField, &node, sizeof(node));
    AddTimes(&message, kActiveDeltasField, {0});
    return message;
}

/// Returns a source as it stands in archives and drags.
inline BMessage SourceArchive(vptarget_t target, int32 flags = 0)
{
    BMessage archive;
    ValueProvider(target, flags).Archive(&archive);
    return archive;
}
