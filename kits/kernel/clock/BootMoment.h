// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <optional>
#include <string>
#include <string_view>

namespace kits {

/// The moment at which a boot began, as stored in a file.
struct BootMoment {
    std::string bootId;
    bigtime_t moment = 0; ///< microseconds since 1970

    friend bool operator==(const BootMoment&, const BootMoment&) = default;
};

/// Returns the text of the file: one line each for the boot, the moment, and a checksum over both.
[[nodiscard]] std::string FormatBootMoment(const BootMoment& boot);

/// Accepts exactly what FormatBootMoment writes. Returns nothing if the text was cut, lengthened or damaged, or if the
/// moment is not in the years 1970 to 9999.
[[nodiscard]] std::optional<BootMoment> ParseBootMoment(std::string_view text);

/// Reads the file at `path`.
/// @return `B_OK`, `B_BAD_VALUE` if it contains something else, or the reason why it could not be read
status_t LoadBootMoment(const std::string& path, BootMoment* boot);

/// Makes `*boot` the kept moment, unless one of the same boot is kept already: then that replaces `*boot`. However many
/// processes do so at once, and wherever they are stopped, the file is whole and all have the same moment.
///
/// Without a real-time clock every boot may seem to begin at the same time. A boot that seems to have begun at the same
/// time as the one before it, or up to a minute earlier, gets a moment one second after that one.
/// @return `B_OK`, or why it is not kept; `*boot` is then as before
status_t KeepBootMoment(const std::string& path, BootMoment* boot);

} // namespace kits
