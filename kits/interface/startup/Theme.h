// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace kits {

/// The colours of controls, menus and windows.
///
/// On a light desktop they are the user's, on the platform's grey panels; on a dark one they are the user's if the
/// toolkit knows them, otherwise a dark set of ours. A toolkit that takes a desktop's colours only at its start does
/// not notice that they have changed: then they are ours, light or dark.
///
/// The desktop's signs (DarkSigns) say how dark it is. At the start they are read from whatever is at hand: the
/// environment, the settings that the X server passes on, and files. The desktop portal is asked a moment later, when
/// it reports a changed setting, and whenever the program comes to the front; the other signs are read again when they
/// change. Main thread.
namespace Theme {

/// Call it after the toolkit's application object was made; queries nothing that takes time.
void Start();
void Stop();

/// Call it for the application's events: follows changes of the colours.
void Watch(int eventType);

/// Acts as if the desktop had this sign; nothing: as if there were no sign.
void SetDesktopIsDark(std::optional<bool> dark);

} // namespace Theme

} // namespace kits
