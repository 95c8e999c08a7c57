#pragma once

#include <string>

namespace kits {

/// The colours that controls, menus and windows have.
///
/// On a light desktop they are the user's, on the platform's grey panels. On a dark one they are the user's where the
/// toolkit knows them, else a dark set of ours. Whether the desktop is dark the toolkit knows of some desktops; of the
/// others GTK_THEME and GTK's settings file tell at the start, and the desktop portal a moment later, when it says that
/// a setting changed, and whenever the program comes to the front. Main thread.
namespace Theme {

/// After the toolkit's application object is made; asks nothing that takes time.
void Start();
void Stop();

/// To be told of the application's events: follows changes of the colours.
void Watch(int eventType);

/// Whether the panels are dark.
bool IsDark();

/// What GTK's settings say, from the text of its settings.ini.
bool SettingsAreDark(const std::string& ini);
/// What the environment variable GTK_THEME says; empty: nothing.
bool ThemeNameIsDark(const std::string& name);

/// As if the desktop had said so.
void SetDesktopIsDark(bool dark);

} // namespace Theme

} // namespace kits
