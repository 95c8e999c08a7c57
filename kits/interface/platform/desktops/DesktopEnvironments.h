// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"

#include <string>

namespace kits {

/// The desktop environments whose background this program knows how to read and to paint. DesktopBackend says which of
/// them the session has; tests make each by itself.

/// The names of the settings of GNOME or of a desktop derived from it. Values are in the form in which gsettings prints
/// them.
struct GnomeFamily {
    const char* name;
    const char* schema;
    const char* path; ///< of the schema, in dconf
    const char* picture = "picture-uri";
    const char* darkPicture = "";                 ///< "" if dark windows have no picture of their own
    const char* pictureStyle = "picture-options"; ///< with the value noPicture, this setting hides the picture
    const char* noPicture = "'none'";

    bool HasDarkPicture() const { return *darkPicture != '\0'; }
};
inline constexpr GnomeFamily kGnome{.name = "gnome",
                                    .schema = "org.gnome.desktop.background",
                                    .path = "/org/gnome/desktop/background/",
                                    .darkPicture = "picture-uri-dark"};
inline constexpr GnomeFamily kCinnamon{
    .name = "cinnamon", .schema = "org.cinnamon.desktop.background", .path = "/org/cinnamon/desktop/background/"};
/// Its options have none without a picture, so the name of the picture is emptied.
inline constexpr GnomeFamily kMate{.name = "mate",
                                   .schema = "org.mate.background",
                                   .path = "/org/mate/desktop/background/",
                                   .picture = "picture-filename",
                                   .pictureStyle = "picture-filename",
                                   .noPicture = "''"};

/// The background of GNOME and of the desktops derived from it. Their tools read and write it: gsettings handles the
/// values, and dconf reports which of them the user has set. Without dconf every value counts as set.
/// @param family  must outlive the desktop
std::unique_ptr<DesktopBackend> MakeGnomeDesktop(const GnomeFamily& family = kGnome);

/// The background of XFCE, read and set by xfconf-query. Each monitor and workspace has settings of its own; painting
/// changes all.
/// @param screen  the X server's name of the main monitor
std::unique_ptr<DesktopBackend> MakeXfceDesktop(const std::string& screen = "");

/// The background of KDE's desktop shell, changed by scripts that the shell runs on a call of dbus-send. Each monitor
/// and activity has settings of its own. Painting changes all of them; the colour is that of the current main monitor.
///
/// The shell keeps its settings in memory and in a file. The desktop sets both, and reads them back. While no shell
/// runs, at login and at the end of the session, it reads the file, and KDE's own tool writes it.
std::unique_ptr<DesktopBackend> MakePlasmaDesktop();

/// The desktop of LXQt, which PCManFM-Qt draws. That program writes its settings to a file and never reads them again.
/// By the session bus (dbus-send) it accepts no colour, but a picture and a way to show it. So:
///
/// - Where it shows a picture, that is replaced by a picture file of one colour, and set again later.
/// - Where it shows its plain colour, its window alone shows such a picture, and its settings stay as they are: the
///   window accepts a path that leads nowhere, does not store it, and finds a file with a suffix added. A colour that
///   is set for good in this way lasts until the session ends.
///
/// Known versions do not store the mode of the window in their settings; a version that stores it works, too.
///
/// While it does not run, as at a login and at the session's end, the file is read, and written in its place.
/// `IsThere()` is true if it draws the desktop of this session, or will as soon as the session has started it.
std::unique_ptr<DesktopBackend> MakePcmanfmDesktop();

} // namespace kits
