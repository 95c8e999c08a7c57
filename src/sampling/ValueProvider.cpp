// SPDX-License-Identifier: MIT
#include "src/sampling/ValueProvider.h"

#include "src/sampling/Source.h"
#include "src/support/FixedPoint.h"
#include "src/support/Tr.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

/// Prints with one decimal and a point, whatever the language.
void PrintDecimal(char* buffer, double value, const char* unit)
{
    std::snprintf(buffer, ValueProvider::kValueStringLength, "%s %s", FixedPoint(value, 1).c_str(), unit);
}

void PrintCount(char* buffer, int64 count, const char* unit)
{
    std::snprintf(buffer, ValueProvider::kValueStringLength, "%lld %s", static_cast<long long>(count), unit);
}

} // namespace

bool IsSourceArchive(const BMessage& archive, bool mayBeNone)
{
    const vptarget_t target = kTargetField.Get(archive);
    int32 flags = 0;
    return (IsKnownSource(target) || (mayBeNone && target == VP_NONE)) &&
           (!kSourceFlagsField.IsIn(archive) || kSourceFlagsField.Find(archive, &flags));
}

ValueProvider::ValueProvider(vptarget_t target, int32 flags)
    : fTarget(target)
    , fFlags(flags)
    , fSource(FindSource(target))
{
}

ValueProvider::ValueProvider(const BMessage* archive)
    : ValueProvider(kTargetField.Get(*archive), kSourceFlagsField.Get(*archive))
{
}

status_t ValueProvider::Archive(BMessage* archive) const
{
    const status_t flags = kSourceFlagsField.Add(archive, fFlags);
    return flags | kTargetField.Add(archive, fTarget);
}

std::string ValueProvider::Name(vptarget_t target, int32 flags, const char* (*inLanguage)(const char*))
{
    const Source* source = FindSource(target);
    if (source == nullptr)
        return {};
    const auto say = [inLanguage](const char* text) { return inLanguage != nullptr ? inLanguage(text) : text; };
    const bool average = (flags & VP_AVERAGE) != 0 && source->averageName != nullptr;
    const std::string name =
        kits::Filled(say(average ? source->averageName : source->name), {std::to_string(ProcessorOf(target) + 1)});
    return (flags & VP_EXP_AVERAGE) != 0 ? kits::Filled(say(TrLater("%1 (exp. averaged)")), {name}) : name;
}

std::string SourceName(vptarget_t target, int32 flags)
{
    return ValueProvider::Name(target, flags, Tr);
}

double ValueProvider::Value(const Sysinfo* sampler, const SysinfoNode* sample)
{
    if (IsProcessorTarget(fTarget) && ProcessorOf(fTarget) >= sample->Info().cpu_count)
        return 0;
    double value = Fraction(sampler, sample);
    if ((fFlags & VP_EXP_AVERAGE) != 0)
        value = Smooth(value);
    return value > 1.0 ? 1.0 : value;
}

double ValueProvider::Fraction(const Sysinfo* sampler, const SysinfoNode* sample) const
{
    if (fSource == nullptr)
        return 0;
    if (fSource->share != nullptr)
        return fSource->share(*sampler, *sample, fTarget, (fFlags & VP_AVERAGE) != 0);
    const kits::Figure figure = fSource->Count(*sample);
    return static_cast<double>(figure.count) / static_cast<double>(figure.maximum);
}

/// The first five results are plain running means; from then on, each value counts for a sixth.
double ValueProvider::Smooth(double value)
{
    // Otherwise one NaN would stay in the average for good.
    if (!std::isfinite(value))
        return value;
    fAccumulator = static_cast<float>(fAccumulator + value);
    if (fCount > 4)
        fAccumulator = static_cast<float>(fAccumulator * 5.0 / 6.0);
    else
        fCount++;
    return static_cast<double>(fAccumulator) / fCount;
}

void ValueProvider::GetValueString(char* buffer, const Sysinfo* sampler, const SysinfoNode* sample)
{
    if (fSource == nullptr || fSource->share != nullptr)
        PrintPercent(buffer, Value(sampler, sample));
    else if (fSource->unit == nullptr)
        PrintMemory(buffer, fSource->Count(*sample).count);
    else
        PrintCount(buffer, fSource->Count(*sample).count, fSource->unit);
}

void ValueProvider::PrintPercent(char* buffer, double share)
{
    PrintDecimal(buffer, share * 100.0, "%");
    // Computed in single precision, an idle share of nothing may be slightly negative.
    if (std::strcmp(buffer, "-0.0 %") == 0)
        PrintDecimal(buffer, 0, "%");
}

void ValueProvider::PrintMemory(char* buffer, int64 pages)
{
    const int64 bytes = pages * 4096;
    if (pages == 0)
        std::snprintf(buffer, kValueStringLength, "nothing");
    else if (bytes >= 1048576)
        PrintDecimal(buffer, static_cast<double>(bytes) * 9.5367431640625e-07, "MB");
    else if (bytes >= 1024)
        PrintDecimal(buffer, static_cast<double>(bytes) * 0.0009765625, "kB");
    else
        PrintCount(buffer, bytes, "Bytes");
}
