// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "src/sampling/SampleRecords.h"
#include "src/sampling/Sysinfo.h"
#include "src/sampling/SysinfoNode.h"

#include <memory>
#include <vector>

/// A sample as another process sends it, with figures of the test's choosing. The other figures are those of a quiet
/// machine with this many processors.
struct GhostFigures {
    explicit GhostFigures(int32 processors)
    {
        node.elapsed = 200000;
        sampler.sumElapsed = 2000000;
        node.info = MachineInfo(processors);
        sampler.info = MachineInfo(processors);
        deltas.resize(static_cast<size_t>(processors));
        sums.resize(static_cast<size_t>(processors));
    }

    /// Sets the active times of all processors and their total.
    void SetDeltas(std::vector<bigtime_t> times)
    {
        deltas = std::move(times);
        node.totalActive = 0;
        for (bigtime_t time : deltas)
            node.totalActive += time;
    }
    void SetSums(std::vector<bigtime_t> times)
    {
        sums = std::move(times);
        sampler.sumTotalActive = 0;
        for (bigtime_t time : sums)
            sampler.sumTotalActive += time;
    }

    BMessage Message() const
    {
        BMessage message;
        AddRecord(&message, kSysinfoBodyField, &sampler, sizeof(sampler));
        AddTimes(&message, kSumActiveField, sums);
        AddRecord(&message, kNodeBodyField, &node, sizeof(node));
        AddTimes(&message, kActiveDeltasField, deltas);
        return message;
    }

    static system_info MachineInfo(int32 processors)
    {
        system_info info = {};
        info.cpu_count = processors;
        info.max_pages = 1000;
        info.used_pages = 250;
        info.max_sems = 100;
        info.used_sems = 10;
        info.max_ports = 200;
        info.used_ports = 50;
        info.max_threads = 400;
        info.used_threads = 300;
        info.max_teams = 50;
        info.used_teams = 20;
        return info;
    }

    SysinfoBody sampler = {};
    SysinfoNodeBody node = {};
    std::vector<bigtime_t> sums;
    std::vector<bigtime_t> deltas;
};

/// The two objects that a receiver makes of such a message.
struct Ghosts {
    explicit Ghosts(const BMessage& message)
        : sampler(&message)
        , node(&message)
    {
    }
    explicit Ghosts(const GhostFigures& figures)
        : Ghosts(figures.Message())
    {
    }

    Sysinfo sampler;
    SysinfoNode node;
};
