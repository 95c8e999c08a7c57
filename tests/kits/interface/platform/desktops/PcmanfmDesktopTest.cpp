// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/PlainPicture.h"
#include "tests/kits/interface/platform/desktops/FakeTools.h"

#include <sys/stat.h>

namespace kits {
namespace {

constexpr rgb_color kRed = make_color(200, 10, 20);
constexpr rgb_color kBlue = make_color(3, 4, 250);
constexpr rgb_color kGrey = make_color(0x44, 0x55, 0x66);
constexpr const char* kFile = "config/pcmanfm-qt/lxqt/settings.conf";

/// Behaves as PCManFM-Qt does when it is called. Its settings in memory are files in the folder "memory", those that
/// its window shows are in "window". It saves its memory after each change, whatever its file contains.
constexpr const char* kSendTool = R"sh(
[ -d "$FAKE/bus" ] || exit 1
case $* in *NameHasOwner*)
    if [ -d "$FAKE/memory" ]; then echo "   boolean true"; else echo "   boolean false"; fi
    exit ;;
esac
[ -d "$FAKE/memory" ] && [ ! -e "$FAKE/deaf" ] || exit 1
case $* in *desktopManagerEnabled*)
    if [ -e "$FAKE/window/mode" ]; then echo "   variant       boolean true"; else echo "   variant       boolean false"; fi
    exit ;;
esac
for word; do path=$mode; mode=${word#string:}; done
cd "$FAKE"
changed=
if [ -n "$path" ] && [ -e "$path" ] && [ "$path" != "$(cat memory/picture)" ]; then
    printf %s "$path" >memory/picture
    changed=1
fi
if [ -n "$mode" ] && [ "$mode" != "$(cat memory/mode)" ]; then
    printf %s "$mode" >window/mode
    [ ! -e notes ] || printf %s "$mode" >memory/mode
    changed=1
fi
[ -n "$changed" ] || exit 0
[ -z "$path" ] || printf %s "$path" >window/picture
mkdir -p config/pcmanfm-qt/lxqt
{
    printf '[Behavior]\nSingleClick=false\nWallpaper=of no desktop\n\n'
    printf '[Desktop]\nBgColor=%s\nLastSlide=\nWallpaper=%s\nWallpaperMode=%s\n' \
        "$(cat memory/color)" "$(cat memory/picture)" "$(cat memory/mode)"
    printf '\n[Window]\nWallpaper=of no desktop\n'
} >written
mv written config/pcmanfm-qt/lxqt/settings.conf
)sh";

class PcmanfmDesktopTest : public FakeToolsTest {
protected:
    void SetUp() override
    {
        FakeToolsTest::SetUp();
        PutTool("dbus-send", kSendTool);
        setenv("XDG_CONFIG_DIRS", folder.Path("system").c_str(), 1);
        setenv("XDG_CACHE_HOME", folder.Path("cache").c_str(), 1);
        for (const char* name : {"bus", "memory", "window", "config/pcmanfm-qt/lxqt", "system/pcmanfm-qt/lxqt",
                                 "system/autostart", "cache/pcmanfm-qt/lxqt"})
            std::filesystem::create_directories(folder.Path(name));
        picture = PutPicture("picture.ppm", kRed, kRed);
        Begin(picture, "stretch");
    }

    /// Starts it with these settings.
    void Begin(const std::string& wallpaper, const std::string& mode)
    {
        for (const char* name : {"memory/", "window/"}) {
            folder.Put(std::string(name) + "picture", wallpaper);
            folder.Put(std::string(name) + "mode", mode);
        }
        folder.Put("memory/color", "#445566");
        PutFile("Wallpaper=" + wallpaper + "\nWallpaperMode=" + mode + "\nBgColor=#445566\n");
    }
    void End()
    {
        std::filesystem::remove_all(folder.Path("memory"));
        std::filesystem::remove_all(folder.Path("window"));
    }
    void PutFile(const std::string& settings, const std::string& file = kFile)
    {
        folder.Put(file, "[Behavior]\nWallpaper=of no desktop\n[Desktop]\n" + settings + "[Window]\nFixedWidth=800\n");
    }
    std::optional<rgb_color> ColorOf(const std::string& settings)
    {
        PutFile(settings);
        return MakePcmanfmDesktop()->Read();
    }
    /// Returns what the window shows, also looking for pictures by the name without its suffix.
    std::optional<rgb_color> Shown()
    {
        const std::string mode = folder.Get("window/mode");
        const std::string path = folder.Get("window/picture");
        if (mode != "none" && mode != "color") {
            for (const std::string& file : {path, path + ".bmp"})
                if (std::filesystem::exists(file))
                    return AverageOfFile(file, kGrey);
        }
        return kGrey;
    }
    bool FileHas(const std::string& text) { return folder.Get(kFile).find(text) != std::string::npos; }
    bool HasPictures() { return folder.Has("config/kits-desktop"); }
    void ExpectAsBefore()
    {
        EXPECT_EQ(folder.Get("memory/picture"), picture);
        EXPECT_EQ(folder.Get("window/picture"), picture);
        EXPECT_EQ(folder.Get("window/mode"), "stretch");
        EXPECT_TRUE(FileHas("\nWallpaper=" + picture + "\nWallpaperMode=stretch\n"));
        EXPECT_FALSE(HasPictures());
    }

    std::string picture;
};

TEST_F(PcmanfmDesktopTest, ReadsTheAverageOfTheWallpaper)
{
    PutPicture("halves.ppm", make_color(0, 0, 0), make_color(0, 100, 0));
    EXPECT_EQ(ColorOf("Wallpaper=" + folder.Path("halves.ppm") + "\nWallpaperMode=zoom\n"), make_color(0, 50, 0));
    EXPECT_EQ(ColorOf("Wallpaper=" + picture + "\n"), kRed);
    folder.Put("broken.png", "no picture");
    EXPECT_EQ(ColorOf("Wallpaper=" + folder.Path("broken.png") + "\n"), std::nullopt);
}

TEST_F(PcmanfmDesktopTest, ReadsPathsAsTheyAreWritten)
{
    std::filesystem::create_directory(folder.Path("b\u00fc ,;=\"x"));
    PutPicture("b\u00fc ,;=\"x/\u00e4.ppm", kBlue, kBlue);
    EXPECT_EQ(ColorOf("Wallpaper=\"" + folder.Path() + "/b\\xfc ,;=\\\"x/\\xe4.ppm\"\n"), kBlue);
    EXPECT_EQ(ColorOf("Wallpaper=" + picture + "\\0.png\n"), kRed);
}

TEST_F(PcmanfmDesktopTest, ReadsThePlainColour)
{
    const std::string wallpaper = "Wallpaper=" + picture + "\n";
    EXPECT_EQ(ColorOf(wallpaper + "WallpaperMode=none\nBgColor=#0304fa\n"), kBlue);
    EXPECT_EQ(ColorOf(wallpaper + "WallpaperMode=color\nBgColor=#0304fa\n"), kBlue);
    EXPECT_EQ(ColorOf(wallpaper + "WallpaperMode=color\n"), make_color(0, 0, 0));
    EXPECT_EQ(ColorOf("Wallpaper=\nWallpaperMode=stretch\nBgColor=#0304fa\n"), kBlue);
    EXPECT_EQ(ColorOf("Wallpaper=/nonexistent/x.png\nWallpaperMode=stretch\nBgColor=#0304fa\n"), kBlue);
}

/// Before the user changes anything, the user has no file.
TEST_F(PcmanfmDesktopTest, ReadsTheWallpaperOfTheSystem)
{
    std::filesystem::remove_all(folder.Path("config/pcmanfm-qt"));
    EXPECT_EQ(MakePcmanfmDesktop()->Read(), std::nullopt);
    EXPECT_FALSE(MakePcmanfmDesktop()->IsThere());
    PutFile("Wallpaper=" + PutPicture("system.ppm", kBlue, kBlue) + "\nWallpaperMode=stretch\n",
            "system/pcmanfm-qt/lxqt/settings.conf");
    EXPECT_EQ(MakePcmanfmDesktop()->Read(), kBlue);
    EXPECT_TRUE(MakePcmanfmDesktop()->IsThere());
}

TEST_F(PcmanfmDesktopTest, ReadsTheSlideThatIsShown)
{
    std::filesystem::create_directory(folder.Path("slides"));
    const std::string show = "Wallpaper=" + picture +
                             "\nSlideShowInterval=300000\nWallpaperDirectory=" + folder.Path("slides") +
                             "\nLastSlide=" + PutPicture("slides/1.ppm", kBlue, kBlue) + "\n";
    EXPECT_EQ(ColorOf(show + "WallpaperMode=zoom\n"), kBlue);
    EXPECT_EQ(ColorOf(show + "WallpaperMode=stretch\n"), kBlue);
    folder.Put("cache/pcmanfm-qt/lxqt/wallpaper.cache.info",
               PutPicture("slides/2.ppm", make_color(1, 2, 3), make_color(1, 2, 3)));
    EXPECT_EQ(ColorOf(show + "WallpaperMode=stretch\n"), make_color(1, 2, 3));
    EXPECT_EQ(ColorOf(show + "WallpaperMode=zoom\n"), kBlue);
    // Cached before the slideshow began.
    folder.Put("cache/pcmanfm-qt/lxqt/wallpaper.cache.info", picture);
    EXPECT_EQ(ColorOf(show + "WallpaperMode=stretch\n"), kBlue);
}

TEST_F(PcmanfmDesktopTest, PaintsInPlaceOfTheWallpaperAndPutsItBack)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(kept.has_value());
    EXPECT_FALSE(HasPictures());
    EXPECT_FALSE(desktop->IsPainted());
    for (const rgb_color color : {kGrey, kBlue}) {
        EXPECT_TRUE(desktop->Paint(color, *kept));
        EXPECT_EQ(Shown(), color);
        EXPECT_TRUE(desktop->IsPainted());
        EXPECT_EQ(desktop->Read(), color);
    }
    // The previous one is no longer used.
    EXPECT_FALSE(folder.Has("config/kits-desktop/plain-445566.bmp"));
    EXPECT_TRUE(desktop->Restore(*kept));
    ExpectAsBefore();
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_EQ(desktop->Read(), kRed);
}

TEST_F(PcmanfmDesktopTest, PaintsOverAPlainColourInItsWindowAlone)
{
    for (const char* mode : {"none", "color"}) {
        Begin(picture, mode);
        const std::string file = folder.Get(kFile);
        const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
        const std::optional<BMessage> kept = desktop->Keep();
        ASSERT_TRUE(kept.has_value());
        EXPECT_TRUE(desktop->Paint(kRed, *kept));
        EXPECT_TRUE(desktop->Paint(kBlue, *kept));
        EXPECT_EQ(Shown(), kBlue);
        EXPECT_TRUE(desktop->IsPainted());
        EXPECT_EQ(folder.Get("memory/picture"), picture);
        EXPECT_TRUE(FileHas("WallpaperMode=" + std::string(mode)));
        EXPECT_TRUE(desktop->Restore(*kept));
        EXPECT_EQ(Shown(), kGrey);
        EXPECT_EQ(folder.Get("memory/picture"), picture);
        EXPECT_FALSE(HasPictures());
        EXPECT_EQ(desktop->Read(), kGrey);
    }
}

/// It refuses a path that leads nowhere in its settings, so the picture must not take its place.
TEST_F(PcmanfmDesktopTest, PaintsInItsWindowAloneWhereTheWallpaperIsGone)
{
    for (const char* mode : {"stretch", "tile"}) {
        Begin("/nonexistent/x.png", mode);
        const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
        const std::optional<BMessage> kept = desktop->Keep();
        ASSERT_TRUE(kept.has_value());
        EXPECT_TRUE(desktop->Paint(kBlue, *kept));
        EXPECT_EQ(Shown(), kBlue);
        EXPECT_TRUE(desktop->Restore(*kept));
        EXPECT_EQ(Shown(), kGrey);
        EXPECT_TRUE(FileHas("\nWallpaper=/nonexistent/x.png\nWallpaperMode=" + std::string(mode)));
    }
}

TEST_F(PcmanfmDesktopTest, AnotherProcessPutsItBackToo)
{
    std::optional<BMessage> kept;
    {
        const std::unique_ptr<DesktopBackend> killed = MakePcmanfmDesktop();
        kept = killed->Keep();
        killed->Paint(kBlue, *kept);
    }
    EXPECT_TRUE(MakePcmanfmDesktop()->Restore(*kept));
    ExpectAsBefore();
    Begin(picture, "none");
    {
        const std::unique_ptr<DesktopBackend> killed = MakePcmanfmDesktop();
        kept = killed->Keep();
        killed->Paint(kBlue, *kept);
    }
    EXPECT_EQ(Shown(), kBlue);
    EXPECT_TRUE(MakePcmanfmDesktop()->Restore(*kept));
    EXPECT_EQ(Shown(), kGrey);
}

TEST_F(PcmanfmDesktopTest, AWallpaperThatIsGoneMeanwhileLeavesThePlainColour)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kBlue, *kept);
    std::filesystem::remove(picture);
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Shown(), kGrey);
    // Also at the next login, though its settings name the painted picture.
    EXPECT_FALSE(HasPictures());
    EXPECT_EQ(desktop->Read(), kGrey);
}

/// At the end of a session it may end first, and at a login start last.
TEST_F(PcmanfmDesktopTest, WhenItDoesNotRunItsFileIsPutBack)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(desktop->Paint(kBlue, *kept));
    EXPECT_FALSE(FileHas(picture));
    End();
    EXPECT_EQ(desktop->Read(), kBlue);
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_TRUE(FileHas("\nWallpaper=" + picture + "\nWallpaperMode=stretch\n"));
    EXPECT_TRUE(FileHas("[Behavior]\nSingleClick=false\nWallpaper=of no desktop\n"));
    EXPECT_TRUE(FileHas("[Window]\nWallpaper=of no desktop\n"));
    EXPECT_FALSE(HasPictures());
}

TEST_F(PcmanfmDesktopTest, WhenItDoesNotAnswerItsFileIsNotWrittenPastIt)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(desktop->Paint(kBlue, *kept));
    const std::string file = folder.Get(kFile);
    folder.Put("deaf", "");
    EXPECT_FALSE(desktop->Paint(kRed, *kept));
    EXPECT_FALSE(desktop->Restore(*kept));
    EXPECT_FALSE(desktop->Change(kRed, &*kept));
    EXPECT_EQ(folder.Get(kFile), file);
}

TEST_F(PcmanfmDesktopTest, WhatTheUserChoseMeanwhileStays)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kBlue, *kept);
    const std::string other = PutPicture("other.ppm", kGrey, kGrey);
    Begin(other, "stretch");
    EXPECT_TRUE(desktop->TakeNews());
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(folder.Get("memory/picture"), other);
    EXPECT_FALSE(HasPictures());
}

TEST_F(PcmanfmDesktopTest, AModeThatTheUserChoseMeanwhileStaysToo)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kBlue, *kept);
    Begin(folder.Get("memory/picture"), "none");
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Shown(), kGrey);
    EXPECT_EQ(folder.Get("memory/picture"), picture);
    EXPECT_TRUE(FileHas("WallpaperMode=none"));
}

TEST_F(PcmanfmDesktopTest, ChangesTheColourForGood)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kBlue, *kept);
    EXPECT_TRUE(desktop->Change(kGrey, &*kept));
    EXPECT_EQ(Shown(), kGrey);
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_EQ(MakePcmanfmDesktop()->Read(), kGrey);
    EXPECT_FALSE(folder.Has("config/kits-desktop/plain-0304fa.bmp"));
    // The tests from here on restore this state.
    const std::optional<BMessage> changed = desktop->Keep();
    desktop->Paint(kRed, *changed);
    EXPECT_TRUE(desktop->Restore(*changed));
    EXPECT_EQ(Shown(), kGrey);
}

/// Its plain colour is a setting that no other program can change.
TEST_F(PcmanfmDesktopTest, AColourForGoodOverAPlainOneLastsUntilTheSessionEnds)
{
    Begin(picture, "none");
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    EXPECT_TRUE(desktop->Change(kBlue, nullptr));
    EXPECT_EQ(Shown(), kBlue);
    EXPECT_EQ(desktop->Read(), kBlue);
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kRed, *kept);
    EXPECT_EQ(Shown(), kRed);
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Shown(), kBlue);
    EXPECT_EQ(desktop->Read(), kBlue);
    PutFile("WallpaperMode=none\nBgColor=#c80a14\n");
    EXPECT_EQ(desktop->Read(), kRed);
}

/// Other versions may note it.
TEST_F(PcmanfmDesktopTest, AModeThatIsNotedIsPutBack)
{
    folder.Put("notes", "");
    Begin(picture, "none");
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    EXPECT_TRUE(desktop->Paint(kRed, *kept));
    EXPECT_TRUE(desktop->Paint(kBlue, *kept));
    EXPECT_EQ(Shown(), kBlue);
    EXPECT_TRUE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Shown(), kGrey);
    EXPECT_TRUE(FileHas("\nWallpaper=" + picture + "\nWallpaperMode=none\n"));
    EXPECT_FALSE(HasPictures());
    // A permanent change stays in the settings.
    EXPECT_TRUE(desktop->Change(kBlue, nullptr));
    EXPECT_EQ(Shown(), kBlue);
    EXPECT_EQ(MakePcmanfmDesktop()->Read(), kBlue);
}

TEST_F(PcmanfmDesktopTest, ASlideShowThatCouldNotBeBroughtBackIsNotPaintedOver)
{
    const std::string show = "SlideShowInterval=300000\nWallpaperDirectory=" + folder.Path() + "\nWallpaperMode=zoom\n";
    PutFile(show + "Wallpaper=\n");
    EXPECT_FALSE(MakePcmanfmDesktop()->Keep().has_value());
    PutFile(show + "Wallpaper=" + picture + "\n");
    EXPECT_TRUE(MakePcmanfmDesktop()->Keep().has_value());
}

TEST_F(PcmanfmDesktopTest, IsThereWhereItDrawsTheDesktopOrWill)
{
    EXPECT_TRUE(MakePcmanfmDesktop()->IsThere());
    std::filesystem::remove(folder.Path("window/mode")); // only a file manager
    EXPECT_FALSE(MakePcmanfmDesktop()->IsThere());
    End();
    EXPECT_FALSE(MakePcmanfmDesktop()->IsThere());
    folder.Put("system/autostart/lxqt-desktop.desktop", "[Desktop Entry]\nExec=pcmanfm-qt --desktop\n");
    EXPECT_TRUE(MakePcmanfmDesktop()->IsThere());
    std::filesystem::create_directory(folder.Path("config/autostart"));
    folder.Put("config/autostart/lxqt-desktop.desktop", "[Desktop Entry]\nHidden=true\n");
    EXPECT_FALSE(MakePcmanfmDesktop()->IsThere());
    std::filesystem::remove_all(folder.Path("bus"));
    EXPECT_FALSE(MakePcmanfmDesktop()->IsThere());
}

TEST_F(PcmanfmDesktopTest, ReadsWithoutAnyTool)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    EXPECT_EQ(desktop->Read(), kRed);
    desktop->Keep();
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(TakeCalls().empty());
}

TEST_F(PcmanfmDesktopTest, HearsWhenItWritesItsFiles)
{
    std::filesystem::remove_all(folder.Path("config/pcmanfm-qt"));
    const std::unique_ptr<DesktopBackend> desktop = MakePcmanfmDesktop();
    EXPECT_EQ(desktop->Descriptors().size(), 2u);
    EXPECT_FALSE(desktop->TakeNews());
    std::filesystem::create_directories(folder.Path("config/pcmanfm-qt/lxqt"));
    PutFile("BgColor=#ffffff\n");
    EXPECT_TRUE(desktop->TakeNews());
    PutFile("BgColor=#fffff0\n");
    EXPECT_TRUE(desktop->TakeNews());
    EXPECT_FALSE(desktop->TakeNews());
    folder.Put("cache/pcmanfm-qt/lxqt/wallpaper.cache.info", picture);
    EXPECT_TRUE(desktop->TakeNews());
}

/// Whatever lies in place of its file.
TEST_F(PcmanfmDesktopTest, AFileThatIsNoneIsNotRead)
{
    std::filesystem::remove(folder.Path(kFile));
    ASSERT_EQ(mkfifo(folder.Path(kFile).c_str(), 0600), 0);
    EXPECT_EQ(MakePcmanfmDesktop()->Read(), std::nullopt);
    std::filesystem::remove(folder.Path(kFile));
    std::filesystem::create_symlink("/dev/zero", folder.Path(kFile));
    EXPECT_EQ(MakePcmanfmDesktop()->Read(), std::nullopt);
    std::filesystem::remove(folder.Path(kFile));
    PutFile("Wallpaper=" + picture + "\n" + std::string(2 * 1024 * 1024, '#'));
    EXPECT_EQ(MakePcmanfmDesktop()->Read(), std::nullopt);
    EXPECT_EQ(ColorOf("Wallpaper=" + std::string(100000, '/') + "\nBgColor=" + std::string(1000, '#') + "\n"),
              make_color(0, 0, 0));
    EXPECT_EQ(ColorOf("Wallpaper=\\x\\x\\xd83d\\\nWallpaperMode=\\\nBgColor=\"\n"), make_color(0, 0, 0));
}

} // namespace
} // namespace kits
