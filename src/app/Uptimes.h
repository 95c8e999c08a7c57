// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/support/SupportDefs.h"

#include <array>
#include <cstddef>

class Preferences;

/// A thousand years, in microseconds: far from any overflow, and more than any machine has.
inline constexpr bigtime_t kLongestUptime = bigtime_t{1000} * 366 * 86'400 * 1'000'000;

/// One boot among the longest.
struct UptimeEntry {
    /// The longest observed time since this boot, microseconds; 0 in an empty entry.
    bigtime_t uptime = 0;
    /// The moment of the boot, microseconds since the epoch, as first recorded; 0 in an empty entry.
    bigtime_t bootTime = 0;
};

/// Two moments of boot belong to the same boot if they are equal except for their 16 lowest bits (65.5 milliseconds).
bool SameBoot(bigtime_t one, bigtime_t other);

/// The ten longest uptimes, best first. A plain value; code that shares it must guard it.
///
/// It is stored as in memory: ten records of 16 bytes, uptime before boot time, little-endian.
class UptimeTable {
public:
    static constexpr size_t kPlaces = 10;
    static constexpr size_t kSize = kPlaces * sizeof(UptimeEntry);

    /// Enters the time since a boot. Updates a boot that is in the table and moves it up past every shorter one, but
    /// not past an equal one; a new one goes above those of equal uptime, and the last of more than ten is dropped.
    /// @param now       time since the boot, microseconds
    /// @param bootTime  moment of that boot, microseconds since the epoch
    void Update(bigtime_t now, bigtime_t bootTime);

    /// @param place  0 to 9, 0 is the longest
    const UptimeEntry& At(size_t place) const { return fEntries[place]; }

    /// The record, `kSize` bytes.
    std::string_view Record() const { return {reinterpret_cast<const char*>(fEntries.data()), kSize}; }

    /// Takes at most `kSize` bytes of a record; what it lacks stays empty. Entries with a negative time are emptied.
    void SetTo(std::string_view record);

private:
    std::array<UptimeEntry, kPlaces> fEntries{};
};

static_assert(sizeof(UptimeEntry) == 16 && sizeof(UptimeTable) == UptimeTable::kSize);

// Fields of the common store.

/// The record of the table.
inline const kits::Field<std::string_view, B_RAW_TYPE> kUptimesField("Uptimes", 0, UptimeTable::kSize,
                                                                     kits::Outside::kHeld);
inline const kits::Field<int32> kBootCountField("BootCount", 0, kits::kMostNumber);
inline const kits::Field<int64> kUptimeSumField("UptimeSum", 0, kLongestUptime, 0, kits::Outside::kHeld);
inline const kits::Field<int64> kLastBootField("USLastBoot", 0, kLongestUptime, 0, kits::Outside::kHeld);
inline const kits::Field<int64> kLastUptimeField("USLastUptime", 0, kLongestUptime, 0, kits::Outside::kHeld);

/// The other contents of the common store. Missing records count as 0; values that no run of the program can have
/// written are held to the possible range.
struct UptimeTotals {
    int32 bootCount = 0;      ///< "BootCount": boots counted
    bigtime_t sum = 0;        ///< "UptimeSum": of all counted boots up to the last save, microseconds
    bigtime_t lastBoot = 0;   ///< "USLastBoot": moment of the boot of the last save, microseconds since the epoch
    bigtime_t lastUptime = 0; ///< "USLastUptime": time since boot at the last save, microseconds

    static UptimeTotals From(const BMessage& store);
    /// Reads them; removes fields of another type, so that StoreIn() succeeds.
    static UptimeTotals TakeFrom(Preferences* store);
    void StoreIn(Preferences* store) const;

    /// Counts the time since the last save; the first save of a boot counts that boot and all of its uptime. The time
    /// of the previous boot after its last save, at most ten minutes, is lost.
    void Count(bigtime_t now, bigtime_t bootTime);
};
