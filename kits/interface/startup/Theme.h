// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace kits {

/// The colours that controls, menus and windows have.
///
/// On a light desktop they are the user's, on the platform's grey panels; on a dark one they are the user's where the
/// toolkit knows them, else a dark set of ours. A toolkit that has taken a desktop's colours at its start does not know
/// that they have changed: then they are ours, light or dark.
///
/// How dark the desktop is its signs tell (DarkSigns). At the start they are read from what is at hand: the
/// environment, the settings that the X server passes on, and files. The desktop portal is asked a moment later, when
/// it says that a setting changed, and whenever the program comes to the front; the others are read again when they
/// change. Main thread.
namespace Theme {

/// After the toolkit's application object is made; asks nothing that takes time.
void Start();
void Stop();

/// To be told of the application's events: follows changes of the colours.
void Watch(int eventType);

/// As if the desktop had said so; nothing: as if there were no sign.
void SetDesktopIsDark(std::optional<bool> dark);

} // namespace Theme

} // namespace kits
