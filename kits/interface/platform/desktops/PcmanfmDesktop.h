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
    /// What the settings say.
    struct State {
        std::string picture;     ///< the path of the wallpaper; "" for none
        std::string written;     ///< the same, as it stands in the file
        std::string mode;        ///< how the picture is shown: "stretch", ...
        std::string color;       ///< of the background, as it stands in the file
        std::string slides;      ///< the folder of a slide show; "" for none
        std::string slide;       ///< its last picture that was written down
        bool hasPicture = false; ///< the wallpaper is shown, but for slides, and can be set again

        bool operator==(const State& other) const
        {
            return picture == other.picture && mode == other.mode && color == other.color;
        }
        /// Only the background's colour is shown.
        bool IsPlain() const;
        /// Another mode than that of the settings, which is the only one that counts for the window alone.
        std::string OtherMode() const;
        /// True if these are the settings of before, but for a mode that may have been noted for the window.
        bool Is(const State& before, bool notesMode) const;
        rgb_color Background() const;
    };

    static std::optional<State> Current();
    static State StateOf(const BMessage& kept);
    /// The picture of a slide show that is shown now, as far as it can be told.
    static std::string Slide(const State& state);
    /// As the wallpaper.
    bool ShowInSettings(rgb_color color);
    bool ShowInWindow(rgb_color color);
    static bool PutPictureBack(const State& before, const State& now);
    static bool WriteBack(const State& before);
    /// Removes the picture files that nobody needs any more.
    void RemoveUnused() const;

    FileWatch fSettings;
    FileWatch fSlides;
    std::optional<State> fPaintedOver;
    std::string fInWindow;                               ///< the picture file that is shown for the window alone
    bool fNotesMode = false;                             ///< it has noted the mode for the window in its settings
    std::optional<std::pair<State, rgb_color>> fChanged; ///< a colour set for good that is in no settings
};

} // namespace kits
