// SPDX-License-Identifier: MIT
#pragma once

#include "src/sampling/ValueProvider.h"

#include <span>
#include <vector>

/// A source by what identifies it.
struct SourceKey {
    vptarget_t target;
    int32 flags;

    bool operator==(const SourceKey&) const = default;
};

/// The sources that every machine has, in the order in which they are offered: related ones stand together.
std::span<const SourceKey> MachineSources();

/// A group with one set of sources for each processor.
struct ProcessorGroup {
    const char* name;
    bool idle;
    int32 flags; ///< of the plain source; the second one of each processor is smoothed as well

    /// Returns the group's two sources of one processor, plain and smoothed.
    /// @param processor  from 0
    std::vector<SourceKey> Sources(int32 processor) const;
};

/// The groups, in the order in which they are offered.
std::span<const ProcessorGroup> ProcessorGroups();

/// Every source of a machine: MachineSources(), then each group with its processors in order.
std::vector<SourceKey> AllSources(int32 processorCount);
