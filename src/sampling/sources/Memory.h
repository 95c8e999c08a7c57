// SPDX-License-Identifier: MIT
#pragma once

#include "src/sampling/Source.h"

/// Memory, in pages. The record of a sample holds up to 8 TiB of it, the sample itself any amount.

inline kits::Figure MemoryInUse(const SysinfoNode& sample)
{
    return {sample.UsedPages(), sample.MaxPages()};
}

inline kits::Figure MemoryLeft(const SysinfoNode& sample)
{
    return {sample.MaxPages() - sample.UsedPages(), sample.MaxPages()};
}

inline constexpr Source kMemory[] = {
    {VP_FREE_MEMORY, TrLater("Free memory"), nullptr, MemoryLeft, VP_EXP_AVERAGE},
    {VP_USED_MEMORY, TrLater("Used memory"), nullptr, MemoryInUse, VP_EXP_AVERAGE},
};
template <> inline constexpr std::span<const Source> kFamily<1> = kMemory;
