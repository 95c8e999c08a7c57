// SPDX-License-Identifier: MIT
#include "src/sampling/SourceName.h"

#include "src/support/Tr.h"

namespace {

/// Plain, idle, average, average and idle.
constexpr const char* kProcessor[] = {TrLater("CPU %1"), TrLater("CPU %1 idle"), TrLater("CPU %1 average"),
                                      TrLater("CPU %1 average idle")};
constexpr const char* kAllProcessors[] = {TrLater("All CPUs"), TrLater("All CPUs idle"), TrLater("All CPUs average"),
                                          TrLater("All CPUs average idle")};

std::string PlainName(vptarget_t target, int32 flags)
{
    const int kind = (flags & VP_AVERAGE) != 0 ? 2 : 0;
    if (target >= VP_FIRST_CPU_IDLE && target <= VP_LAST_CPU_TARGET)
        return kits::Filled(Tr(kProcessor[kind + target % 2]), {std::to_string((target - 1) / 2 + 1)});
    if (target == VP_ALL_CPUS || target == VP_ALL_CPUS_IDLE)
        return Tr(kAllProcessors[kind + (target == VP_ALL_CPUS_IDLE ? 1 : 0)]);
    const std::string name = ValueProvider::Name(target, 0);
    return Tr(name.c_str());
}

} // namespace

std::string SourceName(vptarget_t target, int32 flags)
{
    const std::string name = PlainName(target, flags);
    return (flags & VP_EXP_AVERAGE) != 0 && !name.empty() ? kits::Filled(Tr("%1 (exp. averaged)"), {name}) : name;
}
