// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// Fills the places of standard input, output and error where the process was started without them. Else the next
/// file that is opened takes such a place, and what is meant for the user's eyes is written into it: a message of an
/// error into the settings.
///
/// What fills them refuses what they are for, so that reading and printing still fail as they do on closed streams.
///
/// Call it before the process opens anything. Streams that are there are left alone.
void FillStandardStreams();

} // namespace kits
