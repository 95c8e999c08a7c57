// SPDX-License-Identifier: MIT
#pragma once

namespace kits {

/// Limits what this process can do from now on, whatever a broken or hostile file makes a library do: 1 GiB of address
/// space, five seconds of processor time, no core dump. At a limit an allocation fails, or the process ends. Call it
/// before anything else.
void LimitProcess();

} // namespace kits
