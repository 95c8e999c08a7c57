// SPDX-License-Identifier: MIT
#include "src/app/Uptimes.h"

#include "src/prefs/store/Preferences.h"

#include <algorithm>
#include <limits>

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

void UptimeTable::SetTo(std::string_view record)
{
    fEntries = {};
    record.copy(reinterpret_cast<char*>(fEntries.data()), kSize);
    for (UptimeEntry& entry : fEntries)
        if (!kLastUptimeField.Holds(entry.uptime) || !kLastBootField.Holds(entry.bootTime))
            entry = {};
}

UptimeTotals UptimeTotals::From(const BMessage& store)
{
    UptimeTotals totals;
    totals.bootCount = kBootCountField.Get(store);
    totals.sum = kUptimeSumField.Get(store);
    totals.lastBoot = kLastBootField.Get(store);
    totals.lastUptime = kLastUptimeField.Get(store);
    return totals;
}

UptimeTotals UptimeTotals::TakeFrom(Preferences* store)
{
    store->Claim(kBootCountField);
    for (const kits::Field<int64>* field : {&kUptimeSumField, &kLastBootField, &kLastUptimeField})
        store->Claim(*field);
    return From(*store);
}

void UptimeTotals::StoreIn(Preferences* store) const
{
    store->Set(kBootCountField, bootCount);
    store->Set(kUptimeSumField, sum);
    store->Set(kLastBootField, lastBoot);
    store->Set(kLastUptimeField, lastUptime);
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
