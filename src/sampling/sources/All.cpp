// SPDX-License-Identifier: MIT
#include "src/sampling/sources/Counts.h"
#include "src/sampling/sources/Memory.h"
#include "src/sampling/sources/Processors.h"

#include <algorithm>
#include <utility>

namespace {

template <size_t... places> std::vector<Source> Joined(std::index_sequence<places...>)
{
    std::vector<Source> sources;
    (sources.insert(sources.end(), kFamily<places>.begin(), kFamily<places>.end()), ...);
    return sources;
}

} // namespace

const std::vector<Source>& Sources()
{
    static const std::vector<Source> kSources = Joined(std::make_index_sequence<kMostFamilies>());
    return kSources;
}

const Source* FindSource(vptarget_t target)
{
    if (IsProcessorTarget(target))
        return target % 2 == VP_FIRST_CPU_IDLE ? &kIdleProcessor : &kProcessor;
    const auto found = std::ranges::find(Sources(), target, &Source::target);
    return found != Sources().end() ? &*found : nullptr;
}

bool IsKnownSource(vptarget_t target)
{
    return (target >= VP_FIRST_CPU_IDLE && target <= VP_ALLOCATED_PORTS) || FindSource(target) != nullptr;
}

void ReadFiles(std::span<const Source> sources, std::vector<FigureRecord>* figures)
{
    for (const Source& source : sources) {
        if (source.file == nullptr || figures->size() == kMostFigures)
            continue;
        const kits::Figure figure = source.file->Read();
        figures->push_back({source.target, figure.count, figure.maximum});
    }
}
