// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// Opens standard input, output and error if the process was started without them. Otherwise the next file that the
/// process opens would take the number of a stream, and an error message would be written into it, for example into
/// the settings.
///
/// Reading from and writing to a stream that was opened here still fails, as it does on a closed one.
///
/// Call it before the process opens anything. Open streams are left alone.
void FillStandardStreams();

} // namespace kits
