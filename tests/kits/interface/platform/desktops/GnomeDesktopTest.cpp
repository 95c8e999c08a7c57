// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/DesktopWatch.h"
#include "kits/interface/platform/desktops/SettingsDesktop.h"
#include "tests/kits/interface/platform/desktops/FakeTools.h"

using test::Await;

namespace kits {
namespace {

constexpr rgb_color kRed = make_color(200, 10, 20);
constexpr rgb_color kBlue = make_color(3, 4, 250);

/// A setting is a file; a setting with a value has a second file, named set-...
constexpr const char* kSettingsTool = R"sh(
tell() { echo "$1: $(cat "$FAKE/$2/$1")" >>"$FAKE/$2.news"; }
case $1 in
list-recursively) [ -d "$FAKE/$2" ] || exit 1; cd "$FAKE/$2" && for key in *; do echo "$2 $key $(cat $key)"; done ;;
get) cat "$FAKE/$2/$3" ;;
set) printf '%s\n' "$4" >"$FAKE/$2/$3"; touch "$FAKE/set-$3"; tell "$3" "$2" ;;
reset) cp "$FAKE/defaults-$3" "$FAKE/$2/$3"; rm -f "$FAKE/set-$3"; tell "$3" "$2" ;;
monitor) exec tail -n +1 -f "$FAKE/$2.news" ;;
esac
)sh";
constexpr const char* kDatabaseTool = R"sh(
key=${2##*/}
if [ -e "$FAKE/set-$key" ]; then cat "$FAKE/org.gnome.desktop.background/$key"; fi
)sh";

class GnomeDesktopTest : public FakeToolsTest {
protected:
    void SetUp() override
    {
        FakeToolsTest::SetUp();
        PutTool("gsettings", kSettingsTool);
        PutTool("dconf", kDatabaseTool);
        for (const char* schema : {"org.gnome.desktop.background", "org.gnome.desktop.interface"}) {
            std::filesystem::create_directory(folder.Path(schema));
            folder.Put(schema + std::string(".news"), "");
        }
        Default("primary-color", "'#102030'");
        Default("secondary-color", "'#000000'");
        Default("color-shading-type", "'solid'");
        Default("picture-options", "'none'");
        Default("picture-uri", "'file:///nowhere.jpg'");
        Default("picture-uri-dark", "''");
        folder.Put("org.gnome.desktop.interface/color-scheme", "'default'\n");
    }

    void Default(const std::string& key, const std::string& value)
    {
        folder.Put("defaults-" + key, value + "\n");
        folder.Put("org.gnome.desktop.background/" + key, value + "\n");
    }
    /// Sets it as the user does in the settings.
    void SetByUser(const std::string& key, const std::string& value)
    {
        Tool::Run({"gsettings", "set", "org.gnome.desktop.background", key, value});
    }
    std::string Value(const std::string& key)
    {
        const std::string text = folder.Get("org.gnome.desktop.background/" + key);
        return text.substr(0, text.find('\n'));
    }
    bool IsSet(const std::string& key) { return folder.Has("set-" + key); }
};

TEST_F(GnomeDesktopTest, ReadsThePlainColour)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    EXPECT_EQ(desktop->Read(), make_color(0x10, 0x20, 0x30));
    SetByUser("primary-color", "'#ffff80800000'");
    EXPECT_EQ(desktop->Read(), make_color(255, 128, 0));
    SetByUser("primary-color", "'rgb(1,2,3)'");
    EXPECT_EQ(desktop->Read(), make_color(1, 2, 3));
    SetByUser("color-shading-type", "'vertical'");
    SetByUser("secondary-color", "'#030405'");
    EXPECT_EQ(desktop->Read(), make_color(2, 3, 4));
    SetByUser("primary-color", "'no colour'");
    EXPECT_EQ(desktop->Read(), std::nullopt);
}

TEST_F(GnomeDesktopTest, ReadsTheAverageOfThePictureOfLightAndDark)
{
    SetByUser("picture-options", "'zoom'");
    SetByUser("picture-uri", "'file://" + PutPicture("light picture.ppm", kRed, kRed) + "'");
    SetByUser("picture-uri-dark",
              "'file://" + PutPicture("dark.ppm", make_color(0, 0, 10), make_color(0, 0, 20)) + "'");
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    EXPECT_EQ(desktop->Read(), kRed);
    folder.Put("org.gnome.desktop.interface/color-scheme", "'prefer-dark'\n");
    EXPECT_EQ(desktop->Read(), make_color(0, 0, 15));
    folder.Put("dark.ppm", "no picture");
    EXPECT_EQ(desktop->Read(), make_color(0x10, 0x20, 0x30));
}

TEST_F(GnomeDesktopTest, KeepingChangesNothing)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    EXPECT_TRUE(desktop->Keep().has_value());
    for (const std::string& call : TakeCalls())
        EXPECT_EQ(call.find(" set "), call.npos) << call;
}

TEST_F(GnomeDesktopTest, PaintsAPlainColourAndPutsEverySettingBack)
{
    SetByUser("picture-options", "'zoom'");
    SetByUser("primary-color", "'#abcdef'");
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(kept.has_value());
    TakeCalls();
    EXPECT_TRUE(desktop->Paint(kRed, *kept));
    EXPECT_EQ(TakeCalls(),
              (std::vector<std::string>{"gsettings set org.gnome.desktop.background primary-color '#c80a14'",
                                        "gsettings set org.gnome.desktop.background color-shading-type 'solid'",
                                        "gsettings set org.gnome.desktop.background picture-options 'none'"}));
    EXPECT_EQ(desktop->Read(), kRed);
    TakeCalls();
    EXPECT_TRUE(desktop->Paint(kBlue, *kept));
    EXPECT_EQ(TakeCalls(),
              std::vector<std::string>{"gsettings set org.gnome.desktop.background primary-color '#0304fa'"});
    EXPECT_TRUE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Value("picture-options"), "'zoom'");
    EXPECT_EQ(Value("primary-color"), "'#abcdef'");
    EXPECT_EQ(Value("color-shading-type"), "'solid'");
    EXPECT_FALSE(IsSet("color-shading-type"));
    EXPECT_TRUE(IsSet("picture-options"));
    EXPECT_FALSE(desktop->IsPainted());
}

TEST_F(GnomeDesktopTest, AnotherProcessPutsItBackToo)
{
    SetByUser("picture-options", "'zoom'");
    std::optional<BMessage> kept;
    {
        const std::unique_ptr<DesktopBackend> killed = MakeGnomeDesktop();
        kept = killed->Keep();
        killed->Paint(kRed, *kept);
        killed->Paint(kBlue, *kept);
    }
    const std::unique_ptr<DesktopBackend> next = MakeGnomeDesktop();
    EXPECT_TRUE(next->Restore(*kept));
    EXPECT_EQ(Value("picture-options"), "'zoom'");
    EXPECT_EQ(Value("primary-color"), "'#102030'");
    EXPECT_FALSE(IsSet("primary-color"));
}

TEST_F(GnomeDesktopTest, WithoutTheDatabaseToolValuesArePutBack)
{
    folder.Put("bin/dconf", "#!/bin/sh\nexit 1\n");
    SetByUser("picture-options", "'scaled'");
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kRed, *kept);
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Value("picture-options"), "'scaled'");
    EXPECT_EQ(Value("primary-color"), "'#102030'");
}

TEST_F(GnomeDesktopTest, WhatTheUserChoseMeanwhileStays)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kRed, *kept);
    AwaitNews(*desktop);
    EXPECT_TRUE(desktop->IsPainted());
    SetByUser("picture-options", "'wallpaper'");
    EXPECT_TRUE(AwaitNews(*desktop));
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Value("picture-options"), "'wallpaper'");
    EXPECT_EQ(Value("primary-color"), "'#102030'");
}

TEST_F(GnomeDesktopTest, HearsOfChanges)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    EXPECT_EQ(desktop->Descriptors().size(), 2u);
    SetByUser("primary-color", "'#010203'");
    EXPECT_TRUE(AwaitNews(*desktop));
    Tool::Run({"gsettings", "set", "org.gnome.desktop.interface", "color-scheme", "'prefer-dark'"});
    EXPECT_TRUE(AwaitNews(*desktop));
}

TEST_F(GnomeDesktopTest, IsNotThereWithoutItsSchema)
{
    std::filesystem::remove_all(folder.Path("org.gnome.desktop.background"));
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop();
    EXPECT_FALSE(desktop->IsThere());
    EXPECT_FALSE(desktop->Keep().has_value());
    EXPECT_FALSE(desktop->Restore(BMessage()));
}

TEST_F(GnomeDesktopTest, TheWatchFollowsAndPaintsIt)
{
    DesktopWatch watch([] { return MakeGnomeDesktop(); }, make_color(1, 1, 1));
    EXPECT_TRUE(Await([&] { return watch.Get() == make_color(0x10, 0x20, 0x30); }));
    SetByUser("primary-color", "'#c80a14'");
    EXPECT_TRUE(Await([&] { return watch.Get() == kRed; }));
    watch.Set(kBlue, true);
    EXPECT_TRUE(Await([&] { return Value("primary-color") == "'#0304fa'"; }));
    watch.Restore();
    EXPECT_TRUE(Await([&] { return Value("primary-color") == "'#c80a14'"; }));
    EXPECT_EQ(watch.Get(), kRed);
}

TEST(SettingsTexts, AreTakenOutOfTheirQuotes)
{
    EXPECT_EQ(Unquoted("'a b'"), "a b");
    EXPECT_EQ(Unquoted("\"it's\""), "it's");
    EXPECT_EQ(Unquoted("'it\\'s'"), "it's");
    EXPECT_EQ(Unquoted("5"), "5");
    EXPECT_EQ(Unquoted("''"), "");
    EXPECT_EQ(Unquoted("'"), "'");
}

TEST(SettingsTexts, OfColoursAreReadWhole)
{
    EXPECT_EQ(ParseHexColor("#C80a14"), make_color(200, 10, 20));
    EXPECT_EQ(ParseHexColor("#C8000aff14ff"), make_color(200, 10, 20));
    for (const char* wrong : {"", "#", "#12345", "#1234567", "#12345g", "# 1 2 3", "#-1+2-3", "#0x0x0x",
                              "#123456789abg", "rgb(1,2)", "rgb(256,0,0)", "rgb(1,2,3) "})
        EXPECT_EQ(ParseHexColor(wrong), std::nullopt) << wrong;
}

/// Desktops derived from GNOME: the setting that shows a picture, and its value without one.
struct Descendant {
    const GnomeFamily& family;
    std::string picture;
    std::string style;
    std::string noPicture;
    bool isAddress;
};

class DescendantsTest : public FakeToolsTest, public testing::WithParamInterface<Descendant> {
protected:
    void SetUp() override
    {
        FakeToolsTest::SetUp();
        PutTool("gsettings", kSettingsTool);
        PutTool("dconf", "key=${2##*/}\nif [ -e \"$FAKE/set-$key\" ]; then cat \"$FAKE/\"*.background/$key; fi\n");
        std::filesystem::create_directory(folder.Path(GetParam().family.schema));
        folder.Put(GetParam().family.schema + std::string(".news"), "");
        Default("primary-color", "'#5891BC'");
        Default("secondary-color", "'#3C8F25'");
        Default("color-shading-type", "'vertical-gradient'");
        Default("picture-options", "'zoom'");
        Default(GetParam().picture, "'" + std::string(GetParam().isAddress ? "file://" : "") +
                                        PutPicture("wall paper.ppm", kRed, kRed) + "'");
    }
    void Default(const std::string& key, const std::string& value)
    {
        folder.Put("defaults-" + key, value + "\n");
        folder.Put(GetParam().family.schema + ("/" + key), value + "\n");
    }
    std::string Value(const std::string& key)
    {
        const std::string text = folder.Get(GetParam().family.schema + ("/" + key));
        return text.substr(0, text.find('\n'));
    }
};

TEST_P(DescendantsTest, IsReadPaintedAndPutBack)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop(GetParam().family);
    EXPECT_EQ(desktop->Name(), std::string(GetParam().family.name));
    EXPECT_EQ(desktop->Read(), kRed);
    const std::string before = Value(GetParam().style);
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(kept.has_value());
    EXPECT_TRUE(desktop->Paint(kBlue, *kept));
    EXPECT_EQ(Value("primary-color"), "'#0304fa'");
    EXPECT_EQ(Value("color-shading-type"), "'solid'");
    EXPECT_EQ(Value(GetParam().style), GetParam().noPicture);
    EXPECT_EQ(desktop->Read(), kBlue);
    EXPECT_TRUE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Value(GetParam().style), before);
    EXPECT_EQ(Value("primary-color"), "'#5891BC'");
    EXPECT_EQ(Value("color-shading-type"), "'vertical-gradient'");
    EXPECT_FALSE(folder.Has("set-primary-color"));
    EXPECT_EQ(desktop->Read(), kRed);
}

TEST_P(DescendantsTest, HearsOfChangesAndIsChangedForGood)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeGnomeDesktop(GetParam().family);
    EXPECT_EQ(desktop->Descriptors().size(), 1u);
    EXPECT_TRUE(desktop->Change(kBlue, nullptr));
    EXPECT_TRUE(AwaitNews(*desktop));
    EXPECT_EQ(desktop->Read(), kBlue);
    EXPECT_TRUE(folder.Has("set-primary-color"));
}

INSTANTIATE_TEST_SUITE_P(Gnome, DescendantsTest,
                         testing::Values(Descendant{kCinnamon, "picture-uri", "picture-options", "'none'", true},
                                         Descendant{kMate, "picture-filename", "picture-filename", "''", false}),
                         [](const auto& test) { return std::string(test.param.family.name); });

} // namespace
} // namespace kits
