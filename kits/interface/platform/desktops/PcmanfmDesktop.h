// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"
#include "kits/interface/platform/desktops/FileWatch.h"

#include <string>

namespace kits {

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
class PcmanfmDesktop : public DesktopBackend {
public:
    PcmanfmDesktop();

    /// True if it draws the desktop of this session, or will as soon as the session has started it.
    bool IsThere() const;

    const char* Name() const override { return "pcmanfm-qt"; }
    std::optional<rgb_color> Read() override;
    std::optional<BMessage> Keep() override;
    bool Paint(rgb_color color, const BMessage& kept) override;
    bool Restore(const BMessage& kept) override;
    bool Change(rgb_color color, const BMessage* kept) override;
    bool IsPainted() const override;
    bool OutlivesSession() const override { return true; }
    std::vector<int> Descriptors() const override;
    bool TakeNews() override;

private:
    /// The contents of the settings.
    struct State {
        std::string picture;     ///< the path of the wallpaper; "" for none
        std::string written;     ///< the same, as written in the file
        std::string mode;        ///< how the picture is shown: "stretch", ...
        std::string color;       ///< of the background, as written in the file
        std::string slides;      ///< the folder of a slideshow; "" for none
        std::string slide;       ///< its last picture that was noted
        bool hasPicture = false; ///< the wallpaper is shown, except for slides, and can be set again

        bool operator==(const State& other) const
        {
            return picture == other.picture && mode == other.mode && color == other.color;
        }
        /// Whether only the background's colour is shown.
        bool IsPlain() const;
        /// Returns a mode other than that of the settings: only such a mode takes effect for the window alone.
        std::string OtherMode() const;
        /// Returns true if these settings equal earlier ones, except for a mode that may have been noted for the
        /// window.
        bool Is(const State& before, bool notesMode) const;
        rgb_color Background() const;
    };

    static std::optional<State> Current();
    static State StateOf(const BMessage& kept);
    /// Returns the picture that a slideshow shows now, as far as that is known.
    static std::string Slide(const State& state);
    /// Shows the colour as the wallpaper in the settings.
    bool ShowInSettings(rgb_color color);
    bool ShowInWindow(rgb_color color);
    static bool PutPictureBack(const State& before, const State& now);
    static bool WriteBack(const State& before);
    /// Removes the picture files that are no longer needed.
    void RemoveUnused() const;

    FileWatch fSettings;
    FileWatch fSlides;
    std::optional<State> fPaintedOver;
    std::string fInWindow;                               ///< the picture file that is shown in the window only
    bool fNotesMode = false;                             ///< it has noted the mode for the window in its settings
    std::optional<std::pair<State, rgb_color>> fChanged; ///< a permanent colour that is in no settings
};

} // namespace kits
