#include "kits/interface/desktop/PlasmaDesktop.h"

#include "tests/kits/interface/desktop/FakeTools.h"

namespace kits {
namespace {

constexpr rgb_color kRed = make_color(200, 10, 20);
constexpr rgb_color kBlue = make_color(3, 4, 250);
constexpr const char* kFile = "plasma-org.kde.plasma.desktop-appletsrc";

/// A shell with two desktops, whose settings are files; it understands the scripts that are sent to it by their words,
/// and writes its own file when something is set.
constexpr const char* kSendTool = R"sh(
[ -d "$FAKE/desktops" ] || exit 1
for script; do :; done
case $script in
*readConfig*)
    cd "$FAKE/desktops"
    for desktop in *; do
        for key in Color Plugin Image; do echo "   $desktop $key $(cat $desktop/$key 2>/dev/null)"; done
    done
    exit ;;
esac
desktop=$(echo "$script" | sed "s/.*d.id == \([0-9]*\)).*/\1/")
case $script in
*writeConfig*) echo "$script" | sed "s/.*writeConfig('Color', '\([^']*\)').*/\1/" >"$FAKE/desktops/$desktop/Color" ;;
*) echo "$script" | sed "s/.*wallpaperPlugin = '\([^']*\)'.*/\1/" >"$FAKE/desktops/$desktop/Plugin" ;;
esac
echo changed >"$XDG_CONFIG_HOME/plasma-org.kde.plasma.desktop-appletsrc"
)sh";
constexpr const char* kWriteTool = R"sh(
[ "$2 $3 $4 $5 $6" = "plasma-org.kde.plasma.desktop-appletsrc --group Containments --group $6" ] || exit 1
[ "${13} ${14} ${15}" = "--key Color --delete" ] || exit 1
rm "$FAKE/desktops/$6/Color"
)sh";

class PlasmaDesktopTest : public FakeToolsTest {
protected:
    void SetUp() override
    {
        FakeToolsTest::SetUp();
        PutTool("dbus-send", kSendTool);
        PutTool("kwriteconfig6", kWriteTool);
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
    void ExpectAsBefore()
    {
        EXPECT_EQ(Value("1/Plugin"), "org.kde.image");
        EXPECT_FALSE(folder.Has("desktops/1/Color"));
        EXPECT_EQ(Value("27/Plugin"), "org.kde.slideshow");
        EXPECT_EQ(Value("27/Color"), "9,8,7");
    }
};

TEST_F(PlasmaDesktopTest, ReadsTheFirstDesktop)
{
    PlasmaDesktop desktop;
    EXPECT_EQ(desktop.Read(), kRed);
    Put("1/Plugin", "org.kde.color");
    EXPECT_EQ(desktop.Read(), std::nullopt);
    Put("1/Color", "1,2,3");
    EXPECT_EQ(desktop.Read(), make_color(1, 2, 3));
    Put("1/Color", "1,2,3,255");
    EXPECT_EQ(desktop.Read(), make_color(1, 2, 3));
    Put("1/Plugin", "org.kde.slideshow");
    EXPECT_EQ(desktop.Read(), std::nullopt);
}

TEST_F(PlasmaDesktopTest, ReadsPicturesThatAreFolders)
{
    std::filesystem::create_directories(folder.Path("Ocean/contents/images"));
    folder.Put("Ocean/contents/images/0.txt", "no picture");
    PutPicture("Ocean/contents/images/1x1.ppm", make_color(0, 0, 0), make_color(0, 100, 0));
    Put("1/Image", folder.Path("Ocean") + "/");
    EXPECT_EQ(PlasmaDesktop().Read(), make_color(0, 50, 0));
}

TEST_F(PlasmaDesktopTest, PaintsEveryDesktopAndPutsEverythingBack)
{
    PlasmaDesktop desktop;
    const std::optional<BMessage> kept = desktop.Keep();
    ASSERT_TRUE(kept.has_value());
    ExpectAsBefore();
    EXPECT_TRUE(desktop.Paint(kRed, *kept));
    for (const std::string id : {"1", "27"}) {
        EXPECT_EQ(Value(id + "/Color"), "200,10,20");
        EXPECT_EQ(Value(id + "/Plugin"), "org.kde.color");
    }
    EXPECT_TRUE(desktop.IsPainted());
    EXPECT_TRUE(desktop.Paint(kBlue, *kept));
    EXPECT_EQ(desktop.Read(), kBlue);
    EXPECT_TRUE(desktop.Restore(*kept));
    ExpectAsBefore();
}

TEST_F(PlasmaDesktopTest, AnotherProcessPutsItBackToo)
{
    std::optional<BMessage> kept;
    {
        PlasmaDesktop killed;
        kept = killed.Keep();
        killed.Paint(kBlue, *kept);
    }
    EXPECT_TRUE(PlasmaDesktop().Restore(*kept));
    ExpectAsBefore();
}

TEST_F(PlasmaDesktopTest, WithoutTheToolAnEntryThatWasNotThereStays)
{
    std::filesystem::remove(folder.Path("bin/kwriteconfig6"));
    PlasmaDesktop desktop;
    const std::optional<BMessage> kept = desktop.Keep();
    desktop.Paint(kRed, *kept);
    EXPECT_TRUE(desktop.Restore(*kept));
    EXPECT_EQ(Value("1/Plugin"), "org.kde.image");
    EXPECT_EQ(Value("27/Color"), "9,8,7");
}

TEST_F(PlasmaDesktopTest, WhatTheUserChoseMeanwhileStays)
{
    PlasmaDesktop desktop;
    const std::optional<BMessage> kept = desktop.Keep();
    desktop.Paint(kRed, *kept);
    EXPECT_TRUE(AwaitNews(desktop));
    Put("27/Plugin", "org.kde.potd");
    EXPECT_FALSE(desktop.IsPainted());
    EXPECT_TRUE(desktop.Restore(*kept));
    EXPECT_EQ(Value("27/Plugin"), "org.kde.potd");
    EXPECT_EQ(Value("1/Plugin"), "org.kde.image");
}

TEST_F(PlasmaDesktopTest, HearsWhenTheShellWritesItsFile)
{
    PlasmaDesktop desktop;
    EXPECT_FALSE(desktop.TakeNews());
    folder.Put("config/other", "");
    EXPECT_FALSE(desktop.TakeNews());
    folder.Put("config/" + std::string(kFile), "");
    EXPECT_TRUE(desktop.TakeNews());
    folder.Put("config/new", "");
    std::filesystem::rename(folder.Path("config/new"), folder.Path("config/" + std::string(kFile)));
    EXPECT_TRUE(desktop.TakeNews());
}

TEST_F(PlasmaDesktopTest, IsNotThereWithoutAShell)
{
    std::filesystem::remove_all(folder.Path("desktops"));
    EXPECT_FALSE(PlasmaDesktop().IsThere());
}

} // namespace
} // namespace kits
