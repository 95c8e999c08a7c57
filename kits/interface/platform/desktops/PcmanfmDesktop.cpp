// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/Environment.h"
#include "kits/interface/platform/desktops/FileWatch.h"
#include "kits/interface/platform/desktops/IniFile.h"
#include "kits/interface/platform/desktops/PictureFile.h"
#include "kits/interface/platform/desktops/PlainPicture.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"
#include "kits/interface/platform/desktops/Tool.h"
#include "kits/interface/platform/desktops/X11Desktop.h"
#include "kits/kernel/Clock.h"
#include "kits/kernel/Threads.h"
#include "kits/storage/ReplaceFile.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace kits {

namespace {

constexpr const char* kService = "--dest=org.pcmanfm.PCManFM";
constexpr const char* kObject = "/Application";
constexpr const char* kFile = "/pcmanfm-qt/lxqt/settings.conf";
constexpr const char* kCached = "/pcmanfm-qt/lxqt/wallpaper.cache.info";
constexpr const char* kEntry = "/autostart/lxqt-desktop.desktop";

constexpr const char* kGroup = "Desktop";
constexpr const char* kPicture = "Wallpaper";
constexpr const char* kMode = "WallpaperMode";
constexpr const char* kColor = "BgColor";
constexpr const char* kHasPicture = "HasPicture";

/// The colour behind pictures before the user chose another one.
constexpr rgb_color kBlack = make_color(0, 0, 0);

/// It writes a new wallpaper at once.
constexpr bigtime_t kLongestWrite = 2000000;

/// For an X server that is not the desktop's.
constexpr std::pair kUsualSize(3840, 2160);

/// Two of the modes in which a picture of one colour fills the screen.
constexpr const char* kOneMode = "tile";
constexpr const char* kAnotherMode = "zoom";

/// A path that leads nowhere, for a window that must show no picture.
constexpr const char* kNowhere = "/nonexistent";

bool SetPicture(const std::string& path, const std::string& mode)
{
    return Tool::CallBus(
               {kService, kObject, "org.pcmanfm.Application.setWallpaper", "string:" + path, "string:" + mode})
        .has_value();
}

enum class Ruler { kItself, kNobody, kUnknown };

/// Returns who draws the desktop: PCManFM-Qt may run as a file manager alone.
Ruler RulerOfDesktop()
{
    const std::optional<std::string> draws =
        Tool::CallBus({kService, kObject, "org.freedesktop.DBus.Properties.Get", "string:org.pcmanfm.Application",
                       "string:desktopManagerEnabled"});
    if (draws)
        return draws->find("true") != draws->npos ? Ruler::kItself : Ruler::kUnknown;
    return Tool::BusLacks("org.pcmanfm.PCManFM") ? Ruler::kNobody : Ruler::kUnknown;
}

/// Returns "" if there is no settings folder.
std::string OwnFile()
{
    const std::string folder = Environment::OwnSettings();
    return folder.empty() ? "" : folder + kFile;
}

std::string CachedSlide()
{
    const std::string cache = Environment::Value("XDG_CACHE_HOME");
    const std::string home = Environment::Value("HOME");
    if (cache.starts_with('/'))
        return cache + kCached;
    return home.starts_with('/') ? home + "/.cache" + kCached : "";
}

bool Exists(const std::string& path)
{
    std::error_code error;
    return !path.empty() && std::filesystem::is_regular_file(path, error);
}

/// Returns whether the session starts it.
bool IsAutostarted()
{
    for (const std::string& folder : Environment::SettingsFolders()) {
        const std::optional<std::string> text = IniFile::TextOf(folder + kEntry);
        if (text)
            return IniFile(*text).Value("Desktop Entry", "Hidden") != "true";
    }
    return false;
}

bool AwaitPicture(const std::string& path)
{
    const std::string file = OwnFile();
    const auto isThere = [&] {
        const auto written = IniFile::Read(file, IniFile::Values::kAsWritten).Value(kGroup, kPicture);
        return written && UnescapedByQt(*written) == path;
    };
    for (const bigtime_t until = system_time() + kLongestWrite; !isThere(); snooze(10000))
        if (system_time() > until)
            return false;
    return true;
}

/// Writes the value into the user's file, in place of the present one.
bool WritePicture(const std::string& written)
{
    const std::string path = OwnFile();
    const std::optional<std::string> text = IniFile::TextOf(path);
    if (!text)
        return false;
    std::istringstream lines(*text);
    std::string changed;
    bool isInGroup = false;
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.front() == '[')
            isInGroup = line.rfind("[" + std::string(kGroup) + "]", 0) == 0;
        const bool isIt = isInGroup && line.rfind(std::string(kPicture) + "=", 0) == 0;
        changed += (isIt ? std::string(kPicture) + "=" + written : line) + "\n";
    }
    return ReplaceFile(path.c_str(), changed.data(), changed.size()) == B_OK;
}

std::string PutPicture(rgb_color color)
{
    const auto [width, height] = X11Desktop::Size().value_or(kUsualSize);
    return PlainPicture::Put(color, width, height);
}

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
    /// True if only the background's colour is shown.
    bool IsPlain() const { return mode == "none" || mode == "color"; }
    /// Returns a mode other than that of the settings: only such a mode takes effect for the window alone.
    std::string OtherMode() const { return mode == kOneMode ? kAnotherMode : kOneMode; }
    /// Returns true if these settings equal earlier ones, except for a mode that may have been noted for the window.
    bool Is(const State& before, bool notesMode) const
    {
        const bool isNoted = notesMode && (mode == kOneMode || mode == kAnotherMode);
        return picture == before.picture && color == before.color && (mode == before.mode || isNoted);
    }
    rgb_color Background() const { return ParseHexColor(UnescapedByQt(color)).value_or(kBlack); }
};

/// It uses the first existing file as a whole.
std::optional<State> Current()
{
    for (const std::string& folder : Environment::SettingsFolders()) {
        const std::optional<std::string> text = IniFile::TextOf(folder + kFile);
        if (!text)
            continue;
        const IniFile file(*text, IniFile::Values::kAsWritten);
        const auto value = [&file](const char* key) { return file.Value(kGroup, key).value_or(""); };
        // For all other programs, a path ends at the first zero.
        const auto path = [&value](const char* key) {
            const std::string plain = UnescapedByQt(value(key));
            return plain.substr(0, plain.find('\0'));
        };
        State state;
        state.written = value(kPicture);
        state.picture = path(kPicture);
        state.mode = value(kMode);
        state.color = value(kColor);
        if (std::atoi(value("SlideShowInterval").c_str()) > 0)
            state.slides = path("WallpaperDirectory");
        state.slide = path("LastSlide");
        state.hasPicture = !state.IsPlain() && Exists(state.picture);
        return state;
    }
    return std::nullopt;
}

/// Returns the picture that a slideshow shows now, as far as that is known.
std::string Slide(const State& state)
{
    // Only stretched pictures are cached, and only then the file says at once which one is shown.
    const std::string cached = IniFile::TextOf(CachedSlide()).value_or("");
    const bool isSlide = cached.rfind(state.slides, 0) == 0 && Exists(cached);
    return state.mode == "stretch" && isSlide ? cached : state.slide;
}

State StateOf(const BMessage& kept)
{
    State state;
    kept.FindString(kPicture, &state.written);
    kept.FindString(kMode, &state.mode);
    kept.FindString(kColor, &state.color);
    kept.FindBool(kHasPicture, &state.hasPicture);
    state.picture = UnescapedByQt(state.written);
    return state;
}

bool PutPictureBack(const State& before, const State& now)
{
    // It refuses a picture that is gone. It shows the background's colour if its own picture is gone, and does so at
    // the next login.
    if (!Exists(before.picture)) {
        std::error_code error;
        std::filesystem::remove(now.picture, error);
        return SetPicture(kNowhere, now.OtherMode());
    }
    return SetPicture(before.picture, "") && AwaitPicture(before.picture);
}

bool WriteBack(const State& before)
{
    if (!WritePicture(before.written))
        return false;
    // It may have read the file just before.
    return RulerOfDesktop() != Ruler::kItself || !Exists(before.picture) || PutPictureBack(before, before);
}

class PcmanfmDesktop : public DesktopBackend {
public:
    const char* Name() const override { return "pcmanfm-qt"; }
    bool OutlivesSession() const override { return true; }

    bool IsThere() const override
    {
        const Ruler ruler = RulerOfDesktop();
        return Current().has_value() && (ruler == Ruler::kItself || (ruler == Ruler::kNobody && IsAutostarted()));
    }

    std::optional<rgb_color> Read() override
    {
        const std::optional<State> state = Current();
        if (!state)
            return std::nullopt;
        if (fChanged && fChanged->first == *state)
            return fChanged->second;
        if (state->IsPlain())
            return state->Background();
        if (!state->slides.empty())
            return AverageOfFile(Slide(*state), state->Background());
        return state->hasPicture ? AverageOfFile(state->picture, state->Background()) : state->Background();
    }

    std::optional<BMessage> Keep() override
    {
        const std::optional<State> state = Current();
        // A slideshow without a wallpaper beside it could not be restored before its next picture.
        if (!state || (!state->slides.empty() && !state->IsPlain() && !state->hasPicture))
            return std::nullopt;
        BMessage kept;
        kept.AddString(kPicture, state->written);
        kept.AddString(kMode, state->mode);
        kept.AddString(kColor, state->color);
        kept.AddBool(kHasPicture, state->hasPicture);
        return kept;
    }

    bool Paint(rgb_color color, const BMessage& kept) override
    {
        fPaintedOver = StateOf(kept);
        return fPaintedOver->hasPicture ? ShowInSettings(color) : ShowInWindow(color);
    }

    bool Restore(const BMessage& kept) override
    {
        const std::optional<State> now = Current();
        const Ruler ruler = RulerOfDesktop();
        if (!now || ruler == Ruler::kUnknown)
            return false;
        const State before = StateOf(kept);
        bool isDone = true;
        if (before.hasPicture) {
            if (PlainPicture::IsOne(now->picture) && now->picture != before.picture)
                isDone = ruler == Ruler::kItself ? PutPictureBack(before, *now) : WriteBack(before);
        } else if (ruler == Ruler::kItself && now->Is(before, !fPaintedOver || fNotesMode)) {
            if (now->mode != before.mode)
                isDone = SetPicture(kNowhere, before.mode);
            else if (fChanged && fChanged->first == *now)
                isDone = ShowInWindow(fChanged->second);
            else
                isDone = SetPicture(kNowhere, before.OtherMode());
        }
        if (!isDone)
            return false;
        fPaintedOver.reset();
        if (!fChanged)
            fInWindow.clear();
        RemoveUnused();
        return true;
    }

    bool Change(rgb_color color, const BMessage*) override
    {
        const std::optional<State> now = Current();
        if (!now || RulerOfDesktop() != Ruler::kItself ||
            !(now->IsPlain() ? ShowInWindow(color) : ShowInSettings(color)))
            return false;
        fPaintedOver.reset();
        fChanged.reset();
        if (now->IsPlain()) {
            // If the mode is noted, the picture can be noted too.
            if (fNotesMode)
                return ShowInSettings(color);
            fChanged.emplace(*now, color);
        }
        RemoveUnused();
        return true;
    }

    bool IsPainted() const override
    {
        const std::optional<State> now = Current();
        if (!fPaintedOver || !now)
            return false;
        return fPaintedOver->hasPicture ? PlainPicture::IsOne(now->picture) && now->mode == fPaintedOver->mode
                                        : now->Is(*fPaintedOver, fNotesMode);
    }

    std::vector<int> Descriptors() const override { return {fSettings.Descriptor(), fSlides.Descriptor()}; }

    bool TakeNews() override
    {
        const bool isOther = fSettings.TakeNews();
        return fSlides.TakeNews() || isOther;
    }

private:
    /// Shows the colour as the wallpaper in the settings.
    bool ShowInSettings(rgb_color color)
    {
        const std::string file = PutPicture(color);
        if (file.empty() || !SetPicture(file, "") || !AwaitPicture(file))
            return false;
        fInWindow.clear();
        RemoveUnused();
        return true;
    }

    bool ShowInWindow(rgb_color color)
    {
        const std::string file = PutPicture(color);
        const std::optional<State> now = Current();
        if (file.empty() || !now || !SetPicture(PlainPicture::WithoutKind(file), now->OtherMode()))
            return false;
        const std::optional<State> then = Current();
        fNotesMode = then && then->mode == now->OtherMode();
        fInWindow = file;
        RemoveUnused();
        return true;
    }

    /// Removes the picture files that are no longer needed.
    void RemoveUnused() const
    {
        std::vector<std::string> used = {fInWindow};
        if (fPaintedOver)
            used.push_back(fPaintedOver->picture);
        if (const std::optional<State> now = Current())
            used.push_back(now->picture);
        PlainPicture::RemoveOthers(used);
    }

    FileWatch fSettings{OwnFile()};
    FileWatch fSlides{CachedSlide()};
    std::optional<State> fPaintedOver;
    std::string fInWindow;                               ///< the picture file that is shown in the window only
    bool fNotesMode = false;                             ///< it has noted the mode for the window in its settings
    std::optional<std::pair<State, rgb_color>> fChanged; ///< a permanent colour that is in no settings
};

} // namespace

std::unique_ptr<DesktopBackend> MakePcmanfmDesktop()
{
    return std::make_unique<PcmanfmDesktop>();
}

} // namespace kits
