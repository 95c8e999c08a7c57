// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "tests/kits/interface/platform/desktops/FakeTools.h"

namespace kits {
namespace {

constexpr rgb_color kRed = make_color(200, 10, 20);
constexpr rgb_color kBlue = make_color(3, 4, 250);
constexpr const char* kFile = "plasma-org.kde.plasma.desktop-appletsrc";
constexpr const char* kFilePath = "config/plasma-org.kde.plasma.desktop-appletsrc";

/// A shell with two desktops. Its memory is files in a folder; when an entry is set, it writes its settings file, which
/// also contains a panel. It recognises the scripts sent to it by their words.
constexpr const char* kSendTool = R"sh(
for word; do last=$word; done
case $last in
string:org.kde.plasmashell)
    [ -d "$FAKE/bus" ] || exit 1
    if [ -d "$FAKE/desktops" ]; then echo "   boolean true"; else echo "   boolean false"; fi
    exit ;;
esac
[ -d "$FAKE/desktops" ] || exit 1
cd "$FAKE/desktops"
case $last in
*"function line"*)
    for desktop in *; do
        for key in Color Plugin Image Slide Screen; do echo "   $desktop $key $(cat $desktop/$key 2>/dev/null)"; done
    done
    exit ;;
esac
desktop=$(echo "$last" | sed "s/.*d.id == \([0-9]*\)).*/\1/")
case $last in
*"writeConfig('Color'"*) name=Color; value=$(echo "$last" | sed "s/.*writeConfig('Color', '\([^']*\)').*/\1/") ;;
*) name=Plugin; value=$(echo "$last" | sed "s/.*wallpaperPlugin = '\([^']*\)'.*/\1/") ;;
esac
case $last in
*"writeConfig('Color', '');"*) ;;
*"writeConfig('Color'"*)
    # It takes what it has in memory to be in the file too.
    if [ "$(cat $desktop/Color 2>/dev/null)" = "$value" ]; then echo; exit; fi ;;
esac
[ -e "$FAKE/deaf" ] || echo "$value" >"$desktop/$name"
echo "   $(cat $desktop/$name)"
case $last in
*writeConfig*)
    for desktop in *; do
        printf '[Containments][%s]\nformfactor=0\nwallpaperplugin=%s\n\n' $desktop "$(cat $desktop/Plugin)"
        for entry in color:Color image:Image slideshow:Slide; do
            key=${entry#*:}
            [ -e $desktop/$key ] || continue
            printf '[Containments][%s][Wallpaper][org.kde.%s][General]\n' $desktop ${entry%:*}
            if [ $key = Slide ]; then printf 'Image='; else printf '%s=' $key; fi
            printf '%s\n\n' "$(cat $desktop/$key)"
        done
    done >"$FAKE/written"
    printf '[Containments][99]\nformfactor=2\nwallpaperplugin=org.kde.image\n' >>"$FAKE/written"
    mv "$FAKE/written" "$XDG_CONFIG_HOME/plasma-org.kde.plasma.desktop-appletsrc" ;;
esac
)sh";
/// Changes the file, not the shell's memory.
constexpr const char* kWriteTool = R"sh(
[ "$1 $2" = "--file plasma-org.kde.plasma.desktop-appletsrc" ] || exit 1
shift 2
group=
while [ "$1" = --group ]; do group="$group[$2]"; shift 2; done
[ "$1" = --key ] || exit 1
file=$XDG_CONFIG_HOME/plasma-org.kde.plasma.desktop-appletsrc
awk -v group="$group" -v key="$2" -v value="$3" '
    /^\[/ { inside = $0 == group }
    inside && index($0, key "=") == 1 { if (value != "--delete") print key "=" value; next }
    { print }' "$file" >"$FAKE/changed" && mv "$FAKE/changed" "$file"
)sh";

class PlasmaDesktopTest : public FakeToolsTest {
protected:
    void SetUp() override
    {
        FakeToolsTest::SetUp();
        PutTool("dbus-send", kSendTool);
        PutTool("kwriteconfig6", kWriteTool);
        std::filesystem::create_directory(folder.Path("bus"));
        std::filesystem::create_directory(folder.Path("data"));
        setenv("XDG_DATA_HOME", folder.Path("data").c_str(), 1);
        setenv("XDG_DATA_DIRS", folder.Path("data").c_str(), 1);
        setenv("XDG_CONFIG_DIRS", folder.Path("config").c_str(), 1);
        Put("1/Plugin", "org.kde.image");
        Put("1/Image", "file://" + PutPicture("picture.ppm", kRed, kRed));
        Put("27/Plugin", "org.kde.slideshow");
        Put("27/Color", "9,8,7");
    }

    void Put(const std::string& name, const std::string& value)
    {
        std::filesystem::create_directories(std::filesystem::path(folder.Path("desktops/" + name)).parent_path());
        folder.Put("desktops/" + name, value + "\n");
    }
    std::string Value(const std::string& name)
    {
        const std::string text = folder.Get("desktops/" + name);
        return text.substr(0, text.find('\n'));
    }
    /// Returns the settings file; empty before the shell has written it.
    std::string File() { return folder.Has(kFilePath) ? folder.Get(kFilePath) : ""; }
    bool FileHas(const std::string& text) { return File().find(text) != std::string::npos; }
    void ExpectAsBefore()
    {
        EXPECT_EQ(Value("1/Plugin"), "org.kde.image");
        EXPECT_EQ(Value("27/Plugin"), "org.kde.slideshow");
        EXPECT_EQ(Value("27/Color"), "9,8,7");
        EXPECT_TRUE(FileHas("[Containments][1]\nformfactor=0\nwallpaperplugin=org.kde.image\n"));
        EXPECT_TRUE(FileHas("[Containments][27]\nformfactor=0\nwallpaperplugin=org.kde.slideshow\n"));
        EXPECT_TRUE(FileHas("[Containments][27][Wallpaper][org.kde.color][General]\nColor=9,8,7\n"));
        EXPECT_TRUE(FileHas("[Containments][1][Wallpaper][org.kde.color][General]\n\n"));
    }
    /// The shell ends, and leaves its settings file.
    void EndShell() { std::filesystem::remove_all(folder.Path("desktops")); }
    void PutPackage(const std::string& name, rgb_color light, std::optional<rgb_color> dark)
    {
        const std::string contents = "data/wallpapers/" + name + "/contents/";
        std::filesystem::create_directories(folder.Path(contents + "images"));
        PutPicture(contents + "images/64x64.ppm", light, light);
        if (!dark)
            return;
        std::filesystem::create_directories(folder.Path(contents + "images_dark"));
        PutPicture(contents + "images_dark/64x64.ppm", *dark, *dark);
    }
    void PutLook(const std::string& name, const std::string& wallpaper)
    {
        const std::string contents = "data/plasma/look-and-feel/" + name + "/contents";
        std::filesystem::create_directories(folder.Path(contents));
        folder.Put(contents + "/defaults",
                   "[kdeglobals][General]\nColorScheme=Some\n\n[Wallpaper]\nImage=" + wallpaper);
    }
};

TEST_F(PlasmaDesktopTest, ReadsTheFirstDesktop)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    EXPECT_EQ(desktop->Read(), kRed);
    Put("1/Plugin", "org.kde.color");
    EXPECT_EQ(desktop->Read(), std::nullopt);
    Put("1/Color", "1,2,3");
    EXPECT_EQ(desktop->Read(), make_color(1, 2, 3));
    Put("1/Color", "1,2,3,255");
    EXPECT_EQ(desktop->Read(), make_color(1, 2, 3));
    Put("1/Plugin", "org.kde.potd");
    EXPECT_EQ(desktop->Read(), std::nullopt);
}

TEST_F(PlasmaDesktopTest, ReadsTheDesktopOfTheMainMonitor)
{
    Put("27/Plugin", "org.kde.color");
    Put("27/Screen", "1280x800");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), make_color(9, 8, 7));
}

TEST_F(PlasmaDesktopTest, ReadsTheSlideThatIsShown)
{
    Put("1/Plugin", "org.kde.slideshow");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), std::nullopt);
    PutPackage("Sea", kBlue, std::nullopt);
    Put("1/Slide", "file://" + folder.Path("data/wallpapers/Sea") + "/");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), kBlue);
}

TEST_F(PlasmaDesktopTest, APlainWallpaperHasAColourBeforeOneWasChosen)
{
    std::filesystem::create_directories(folder.Path("data/plasma/wallpapers/org.kde.color/contents/config"));
    folder.Put("data/plasma/wallpapers/org.kde.color/contents/config/main.xml",
               "<group name=\"General\">\n <entry name=\"Color\" type=\"Color\">\n  <label>Colour</label>\n"
               "  <default>#1d99f3</default>\n </entry>\n</group>\n");
    Put("1/Plugin", "org.kde.color");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), make_color(0x1d, 0x99, 0xf3));
}

/// Before the user chooses a picture, the settings name none.
TEST_F(PlasmaDesktopTest, ReadsTheWallpaperOfTheLook)
{
    std::filesystem::remove(folder.Path("desktops/1/Image"));
    EXPECT_EQ(MakePlasmaDesktop()->Read(), std::nullopt);
    PutPackage("Sea", kBlue, kRed);
    PutLook("org.kde.breeze.desktop", "Sea");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), kBlue);
    folder.Put("config/kdeglobals", "[Colors:Window]\nBackgroundNormal=42,46,50\n");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), kRed);
    PutPackage("Hills", make_color(1, 2, 3), std::nullopt);
    PutLook("org.example.look", "Hills");
    std::filesystem::create_directory(folder.Path("config/kdedefaults"));
    folder.Put("config/kdedefaults/kdeglobals", "[KDE]\nLookAndFeelPackage=org.example.look\n");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), make_color(1, 2, 3));
    // The settings may name a package instead of a path.
    Put("1/Image", "Sea");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), kRed);
}

TEST_F(PlasmaDesktopTest, ReadsPicturesThatAreFolders)
{
    std::filesystem::create_directories(folder.Path("Ocean/contents/images"));
    folder.Put("Ocean/contents/images/0.txt", "no picture");
    PutPicture("Ocean/contents/images/1x1.ppm", make_color(0, 0, 0), make_color(0, 100, 0));
    Put("1/Image", folder.Path("Ocean") + "/");
    EXPECT_EQ(MakePlasmaDesktop()->Read(), make_color(0, 50, 0));
}

TEST_F(PlasmaDesktopTest, PaintsEveryDesktopAndPutsEverythingBack)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(File(), "");
    EXPECT_TRUE(desktop->Paint(kRed, *kept));
    for (const std::string id : {"1", "27"}) {
        EXPECT_EQ(Value(id + "/Color"), "200,10,20");
        EXPECT_EQ(Value(id + "/Plugin"), "org.kde.color");
        EXPECT_TRUE(FileHas("[Containments][" + id + "]\nformfactor=0\nwallpaperplugin=org.kde.color\n"));
    }
    EXPECT_TRUE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Paint(kBlue, *kept));
    EXPECT_EQ(desktop->Read(), kBlue);
    EXPECT_TRUE(desktop->Restore(*kept));
    ExpectAsBefore();
    // The shell remembers entries that were removed from its file.
    EXPECT_TRUE(desktop->Paint(kBlue, *kept));
    EXPECT_TRUE(FileHas("[Containments][1][Wallpaper][org.kde.color][General]\nColor=3,4,250\n"));
}

TEST_F(PlasmaDesktopTest, AnotherProcessPutsItBackToo)
{
    std::optional<BMessage> kept;
    {
        const std::unique_ptr<DesktopBackend> killed = MakePlasmaDesktop();
        kept = killed->Keep();
        killed->Paint(kBlue, *kept);
    }
    EXPECT_TRUE(MakePlasmaDesktop()->Restore(*kept));
    ExpectAsBefore();
}

TEST_F(PlasmaDesktopTest, WithoutTheToolAnEntryThatWasNotThereStays)
{
    std::filesystem::remove(folder.Path("bin/kwriteconfig6"));
    PutTool("kwriteconfig5", "exit 1");
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kRed, *kept);
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Value("1/Plugin"), "org.kde.image");
    EXPECT_EQ(Value("27/Color"), "9,8,7");
    EXPECT_TRUE(FileHas("wallpaperplugin=org.kde.image"));
}

TEST_F(PlasmaDesktopTest, AShellThatDoesNotObeyIsNotTakenForPainted)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    folder.Put("deaf", "");
    EXPECT_FALSE(desktop->Paint(kRed, *kept));
    EXPECT_EQ(desktop->Read(), kRed); // the picture's average
    EXPECT_FALSE(desktop->Change(kBlue, nullptr));
}

/// At the end of a session the shell may end first.
TEST_F(PlasmaDesktopTest, WhenTheShellHasEndedItsFileIsPutBack)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(desktop->Paint(kRed, *kept));
    EndShell();
    EXPECT_EQ(desktop->Read(), kRed);
    EXPECT_TRUE(desktop->IsThere());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_TRUE(FileHas("[Containments][1]\nformfactor=0\nwallpaperplugin=org.kde.image\n"));
    EXPECT_TRUE(FileHas("[Containments][27]\nformfactor=0\nwallpaperplugin=org.kde.slideshow\n"));
    EXPECT_TRUE(FileHas("[Containments][27][Wallpaper][org.kde.color][General]\nColor=9,8,7\n"));
    EXPECT_FALSE(FileHas("Color=200,10,20"));
    EXPECT_TRUE(FileHas("[Containments][99]\nformfactor=2\nwallpaperplugin=org.kde.image\n"));
}

TEST_F(PlasmaDesktopTest, AShellThatDoesNotAnswerIsNotWrittenPast)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(desktop->Paint(kRed, *kept));
    const std::string file = File();
    PutTool("dbus-send", "case $* in *NameHasOwner*) echo '   boolean true' ;; *) exit 1 ;; esac");
    EXPECT_FALSE(desktop->Restore(*kept));
    EXPECT_EQ(File(), file);
}

TEST_F(PlasmaDesktopTest, ChangesEveryDesktopForGood)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    EXPECT_TRUE(desktop->Change(kBlue, nullptr));
    for (const std::string id : {"1", "27"}) {
        EXPECT_EQ(Value(id + "/Color"), "3,4,250");
        EXPECT_EQ(Value(id + "/Plugin"), "org.kde.color");
    }
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_EQ(desktop->Read(), kBlue);
}

TEST_F(PlasmaDesktopTest, WhatTheUserChoseMeanwhileStays)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kRed, *kept);
    EXPECT_TRUE(AwaitNews(*desktop));
    Put("27/Plugin", "org.kde.potd");
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Value("27/Plugin"), "org.kde.potd");
    EXPECT_EQ(Value("1/Plugin"), "org.kde.image");
}

TEST_F(PlasmaDesktopTest, HearsWhenTheShellWritesItsFile)
{
    const std::unique_ptr<DesktopBackend> desktop = MakePlasmaDesktop();
    EXPECT_FALSE(desktop->TakeNews());
    folder.Put("config/other", "");
    EXPECT_FALSE(desktop->TakeNews());
    folder.Put("config/" + std::string(kFile), "");
    EXPECT_TRUE(desktop->TakeNews());
    folder.Put("config/new", "");
    std::filesystem::rename(folder.Path("config/new"), folder.Path("config/" + std::string(kFile)));
    EXPECT_TRUE(desktop->TakeNews());
}

TEST_F(PlasmaDesktopTest, IsNotThereWithoutAShell)
{
    std::filesystem::remove_all(folder.Path("desktops"));
    EXPECT_FALSE(MakePlasmaDesktop()->IsThere());
}

} // namespace
} // namespace kits
