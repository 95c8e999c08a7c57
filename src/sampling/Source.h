// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FigureFile.h"
#include "src/sampling/SysinfoNode.h"
#include "src/sampling/ValueProvider.h"
#include "src/support/Tr.h"

#include <span>
#include <vector>

/// A source as data: what it shows, and how. The files in src/sampling/sources/ list all sources, each file a family of
/// related ones. Everything else follows from these lists: names, values, captions, the list of sources, and the output
/// of `--read`.
///
/// A source is a count of the machine, in use or left, or a computed share. A count comes from the record of the
/// sample, or from a file of its own, which the sampler then reads in each round.
struct Source {
    vptarget_t target; ///< stored in users' settings, so it stays for good
    const char* name;  ///< marked by TrLater(); "%1" is the number of a processor
    const char* unit;  ///< the unit of a count in its caption; null: pages of memory
    /// Returns the count and its maximum. Null for a computed share, and for a count from `file`.
    kits::Figure (*count)(const SysinfoNode& sample);
    int32 forms = 0;                   ///< flags of the forms that are offered besides the plain one
    const char* averageName = nullptr; ///< the name with VP_AVERAGE; null if there is no such form
    /// Returns the share, from 0 to 1.
    /// @param average  over the sampler's history
    double (*share)(const Sysinfo& sampler, const SysinfoNode& sample, vptarget_t target, bool average) = nullptr;
    kits::FigureFile* file = nullptr;

    kits::Figure Count(const SysinfoNode& sample) const { return count ? count(sample) : sample.FigureOf(target); }
};

/// The family that is offered at a place in the list of sources, from 0. Each file in sources/ fills one place.
inline constexpr size_t kMostFamilies = 32;
template <size_t place> inline constexpr std::span<const Source> kFamily;

/// All sources but those of single processors, in the order in which they are offered.
const std::vector<Source>& Sources();

/// Returns the source with this number, for one of the processors the source of all of them; null for an unassigned
/// number.
const Source* FindSource(vptarget_t target);

/// True for the numbers of all sources, and for the unassigned ones between them, which have no name and show 0.
bool IsKnownSource(vptarget_t target);

/// Reads the files of those sources that have one and adds their figures, at most kMostFigures in all.
void ReadFiles(std::span<const Source> sources, std::vector<FigureRecord>* figures);
