// SPDX-License-Identifier: MIT
#include "src/app/Uptimes.h"

#include "kits/application/Message.h"
#include "kits/support/TypeConstants.h"
#include "src/prefs/store/Preferences.h"
#include "src/support/FieldRanges.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

bigtime_t FindTime(const BMessage& store, const char* name)
{
    bigtime_t value = 0;
    FindInRange(store, name, &value);
    return value;
}

} // namespace

bool SameBoot(bigtime_t one, bigtime_t other)
{
    return (one & ~bigtime_t{0xffff}) == (other & ~bigtime_t{0xffff});
}

void UptimeTable::Update(bigtime_t now, bigtime_t bootTime)
{
    auto same = [bootTime](const UptimeEntry& entry) { return SameBoot(entry.bootTime, bootTime); };
    auto entry = std::find_if(fEntries.begin(), fEntries.end(), same);
    if (entry != fEntries.end()) {
        entry->uptime = now;
        while (entry != fEntries.begin() && entry->uptime > (entry - 1)->uptime) {
            std::iter_swap(entry, entry - 1);
            --entry;
        }
        return;
    }
    auto place =
        std::find_if(fEntries.begin(), fEntries.end(), [now](const UptimeEntry& e) { return e.uptime <= now; });
    if (place != fEntries.end()) {
        std::move_backward(place, fEntries.end() - 1, fEntries.end());
        *place = {now, bootTime};
    }
}

void UptimeTable::SetTo(const void* record, size_t size)
{
    fEntries = {};
    std::memcpy(fEntries.data(), record, std::min(size, kSize));
    for (UptimeEntry& entry : fEntries) {
        auto sane = [](bigtime_t time) { return time >= 0 && time <= kLongestUptime; };
        if (!sane(entry.uptime) || !sane(entry.bootTime))
            entry = {};
    }
}

UptimeTotals UptimeTotals::From(const BMessage& store)
{
    UptimeTotals totals;
    FindInRange(store, "BootCount", &totals.bootCount);
    totals.sum = FindTime(store, "UptimeSum");
    totals.lastBoot = FindTime(store, "USLastBoot");
    totals.lastUptime = FindTime(store, "USLastUptime");
    return totals;
}

UptimeTotals UptimeTotals::TakeFrom(Preferences* store)
{
    store->Claim("BootCount", B_INT32_TYPE);
    for (const char* name : {"UptimeSum", "USLastBoot", "USLastUptime"})
        store->Claim(name, B_INT64_TYPE);
    return From(*store);
}

void UptimeTotals::StoreIn(Preferences* store) const
{
    store->SetInt32("BootCount", bootCount);
    store->SetInt64("UptimeSum", sum);
    store->SetInt64("USLastBoot", lastBoot);
    store->SetInt64("USLastUptime", lastUptime);
}

void UptimeTotals::Count(bigtime_t now, bigtime_t bootTime)
{
    if (SameBoot(lastBoot, bootTime)) {
        sum += std::max<bigtime_t>(now - lastUptime, 0);
    } else {
        sum += now;
        bootCount = std::min(bootCount, std::numeric_limits<int32>::max() - 1) + 1;
    }
    sum = std::min(sum, kLongestUptime);
    lastBoot = bootTime;
    lastUptime = now;
}
