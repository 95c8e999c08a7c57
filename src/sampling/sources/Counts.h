// SPDX-License-Identifier: MIT
#pragma once

#include "src/sampling/Source.h"

/// Processes, threads, semaphores and sockets: the counts of the record, left and in use.

template <auto used, auto maximum> kits::Figure InUse(const SysinfoNode& sample)
{
    return {sample.Info().*used, sample.Info().*maximum};
}

template <auto used, auto maximum> kits::Figure Left(const SysinfoNode& sample)
{
    return {sample.Info().*maximum - sample.Info().*used, sample.Info().*maximum};
}

inline constexpr Source kCounts[] = {
    {VP_AVAILABLE_TEAMS, TrLater("Available teams"), "teams", Left<&system_info::used_teams, &system_info::max_teams>},
    {VP_ALLOCATED_TEAMS, TrLater("Allocated teams"), "teams", InUse<&system_info::used_teams, &system_info::max_teams>},
    {VP_AVAILABLE_THREADS, TrLater("Available threads"), "threads",
     Left<&system_info::used_threads, &system_info::max_threads>},
    {VP_ALLOCATED_THREADS, TrLater("Allocated threads"), "threads",
     InUse<&system_info::used_threads, &system_info::max_threads>},
    {VP_AVAILABLE_SEMS, TrLater("Available semaphores"), "sems", Left<&system_info::used_sems, &system_info::max_sems>},
    {VP_ALLOCATED_SEMS, TrLater("Allocated semaphores"), "sems",
     InUse<&system_info::used_sems, &system_info::max_sems>},
    {VP_AVAILABLE_PORTS, TrLater("Available ports"), "ports", Left<&system_info::used_ports, &system_info::max_ports>},
    {VP_ALLOCATED_PORTS, TrLater("Allocated ports"), "ports", InUse<&system_info::used_ports, &system_info::max_ports>},
};
template <> inline constexpr std::span<const Source> kFamily<2> = kCounts;
