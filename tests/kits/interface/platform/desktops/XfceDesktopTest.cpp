// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/DesktopEnvironments.h"
#include "kits/interface/platform/desktops/Tool.h"
#include "tests/kits/interface/platform/desktops/FakeTools.h"

namespace kits {
namespace {

constexpr rgb_color kRed = make_color(200, 10, 20);
constexpr rgb_color kBlue = make_color(3, 4, 250);
constexpr const char* kFirst = "/backdrop/screen0/monitorDP-1/workspace0";
constexpr const char* kSecond = "/backdrop/screen0/monitorHDMI-2/workspace3";

/// A property is a file that holds the tool's output.
constexpr const char* kQueryTool = R"sh(
[ "$1 $2" = "-c xfce4-desktop" ] || exit 1
shift 2
case $1 in
-l)
    [ "$2" = -v ] || exit 1
    cd "$FAKE/properties" && find . -type f | sed 's/^\.//' | sort | while read -r key; do
        value=$(cat ".$key")
        case $value in "Value is an array"*) value='<<UNSUPPORTED>>' ;; esac
        printf '%-70s  %s\n' "$key" "$value"
    done
    exit ;;
-m) echo 'Start monitoring channel "xfce4-desktop":'; exec tail -n +1 -f "$FAKE/news" ;;
-p) property=$2; file=$FAKE/properties$2; shift 2 ;;
esac
if [ $# = 0 ]; then cat "$file"; exit; fi
if [ "$1" = -r ]; then rm "$file"; echo "reset: $property" >>"$FAKE/news"; exit; fi
mkdir -p "${file%/*}"
count=0 values= array=
while [ $# -gt 0 ]; do
    case $1 in
    -s) values="$values$2
"; count=$((count + 1)); shift ;;
    -a) array=1 ;;
    esac
    shift
done
if [ "$array" ]; then printf 'Value is an array with %d items:\n\n' $count >"$file"; else : >"$file"; fi
printf '%s' "$values" >>"$file"
echo "set: $property" >>"$FAKE/news"
)sh";

class XfceDesktopTest : public FakeToolsTest {
protected:
    void SetUp() override
    {
        FakeToolsTest::SetUp();
        PutTool("xfconf-query", kQueryTool);
        folder.Put("news", "");
        Property(std::string("/backdrop/single-workspace-mode"), "true\n");
        for (const char* workspace : {kFirst, kSecond}) {
            Property(std::string(workspace) + "/image-style", "5\n");
            Property(std::string(workspace) + "/last-image", PutPicture("picture.ppm", kRed, kRed) + "\n");
        }
        Property(kFirst + std::string("/rgba1"),
                 "Value is an array with 4 items:\n\n0.100000\n0.2\n0.300000\n1.000000\n");
    }

    void Property(const std::string& name, const std::string& printed)
    {
        const std::string file = "properties" + name;
        std::filesystem::create_directories(std::filesystem::path(folder.Path(file)).parent_path());
        folder.Put(file, printed);
    }
    std::string Printed(const std::string& name) { return folder.Get("properties" + name); }
    bool Has(const std::string& name) { return folder.Has("properties" + name); }
    std::map<std::string, std::string> All()
    {
        std::map<std::string, std::string> all;
        for (const auto& file : std::filesystem::recursive_directory_iterator(folder.Path("properties"))) {
            const std::string name = file.path().string().substr(folder.Path("properties").size());
            if (file.is_regular_file())
                all[name] = Printed(name);
        }
        return all;
    }
};

TEST_F(XfceDesktopTest, ReadsTheFirstWorkspace)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeXfceDesktop();
    EXPECT_EQ(MakeXfceDesktop()->Read(), kRed);
    Property(kFirst + std::string("/image-style"), "0\n");
    EXPECT_EQ(MakeXfceDesktop()->Read(), make_color(26, 51, 77));
    Property(kFirst + std::string("/color-style"), "1\n");
    Property(kFirst + std::string("/rgba2"), "Value is an array with 4 items:\n\n0.3\n0\n1\n1\n");
    EXPECT_EQ(MakeXfceDesktop()->Read(), make_color(52, 26, 166));
}

TEST_F(XfceDesktopTest, ReadsTheMainMonitorsWorkspaceThatIsShown)
{
    const std::string monitor = "/backdrop/screen0/monitorHDMI-2";
    for (const int number : {1, 3}) {
        const std::string workspace = monitor + "/workspace" + std::to_string(number);
        Property(workspace + "/image-style", "0\n");
        Property(workspace + "/rgba1",
                 "Value is an array with 4 items:\n\n0\n0\n" + std::string(number == 1 ? "1" : "0.2") + "\n1\n");
    }
    EXPECT_EQ(MakeXfceDesktop()->Read(), kRed);
    EXPECT_EQ(MakeXfceDesktop("DP-1")->Read(), kRed);
    // This monitor has none for the first workspace.
    EXPECT_EQ(MakeXfceDesktop("HDMI-2")->Read(), make_color(0, 0, 255));
    Property("/backdrop/single-workspace-number", "3\n");
    EXPECT_EQ(MakeXfceDesktop("HDMI-2")->Read(), make_color(0, 0, 51));
    EXPECT_EQ(MakeXfceDesktop("Gone")->Read(), make_color(0, 0, 51));
}

TEST_F(XfceDesktopTest, AFewCallsAreEnough)
{
    for (int workspace = 4; workspace < 20; workspace++)
        Property("/backdrop/screen0/monitorDP-1/workspace" + std::to_string(workspace) + "/image-style", "5\n");
    const std::unique_ptr<DesktopBackend> desktop = MakeXfceDesktop();
    TakeCalls();
    EXPECT_TRUE(desktop->IsThere());
    EXPECT_LE(TakeCalls().size(), 3u);
}

TEST_F(XfceDesktopTest, PaintsEveryMonitorAndWorkspaceAndPutsEverythingBack)
{
    const std::map<std::string, std::string> before = All();
    const std::unique_ptr<DesktopBackend> desktop = MakeXfceDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(All(), before);
    EXPECT_TRUE(desktop->Paint(kRed, *kept));
    for (const std::string workspace : {kFirst, kSecond}) {
        EXPECT_EQ(Printed(workspace + "/image-style"), "0\n");
        EXPECT_EQ(Printed(workspace + "/color-style"), "0\n");
        EXPECT_EQ(Printed(workspace + "/rgba1"),
                  "Value is an array with 4 items:\n\n0.784314\n0.039216\n0.078431\n1.000000\n");
    }
    EXPECT_TRUE(desktop->IsPainted());
    EXPECT_EQ(desktop->Read(), kRed);
    TakeCalls();
    EXPECT_TRUE(desktop->Paint(kBlue, *kept));
    EXPECT_EQ(TakeCalls().size(), 2u);
    EXPECT_EQ(desktop->Read(), kBlue);
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(All(), before);
}

TEST_F(XfceDesktopTest, AnotherProcessPutsItBackToo)
{
    const std::map<std::string, std::string> before = All();
    std::optional<BMessage> kept;
    {
        const std::unique_ptr<DesktopBackend> killed = MakeXfceDesktop();
        kept = killed->Keep();
        killed->Paint(kBlue, *kept);
    }
    EXPECT_TRUE(MakeXfceDesktop()->Restore(*kept));
    EXPECT_EQ(All(), before);
}

TEST_F(XfceDesktopTest, ADamagedFileSetsWhatWasPaintedOnceAndNothingElse)
{
    const std::map<std::string, std::string> before = All();
    std::optional<BMessage> kept;
    {
        const std::unique_ptr<DesktopBackend> killed = MakeXfceDesktop();
        kept = killed->Keep();
        killed->Paint(kBlue, *kept);
    }
    for (const char* key : {"/last-image", "/image-style", "/image-style"}) {
        kept->AddString("Key", kFirst + std::string(key));
        kept->AddBool("Kind", false);
        kept->AddBool("IsSet", true);
        kept->AddString("Value", "7");
    }
    folder.Put("news", "");
    EXPECT_TRUE(MakeXfceDesktop()->Restore(*kept));
    EXPECT_EQ(Printed(kFirst + std::string("/last-image")), before.at(kFirst + std::string("/last-image")));
    const std::string news = folder.Get("news");
    const std::string style = kFirst + std::string("/image-style\n");
    EXPECT_NE(news.find(style), std::string::npos) << news;
    EXPECT_EQ(news.find(style), news.rfind(style)) << news;
}

TEST_F(XfceDesktopTest, WhatTheUserChoseMeanwhileStays)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeXfceDesktop();
    const std::optional<BMessage> kept = desktop->Keep();
    desktop->Paint(kRed, *kept);
    Tool::Run({"xfconf-query", "-c", "xfce4-desktop", "-p", kFirst + std::string("/image-style"), "-n", "-t", "int",
               "-s", "3"});
    EXPECT_TRUE(AwaitNews(*desktop));
    EXPECT_FALSE(desktop->IsPainted());
    EXPECT_TRUE(desktop->Restore(*kept));
    EXPECT_EQ(Printed(kFirst + std::string("/image-style")), "3\n");
    EXPECT_EQ(Printed(kSecond + std::string("/image-style")), "5\n");
}

TEST_F(XfceDesktopTest, HearsOfBackdropsOnly)
{
    const std::unique_ptr<DesktopBackend> desktop = MakeXfceDesktop();
    folder.Put("news", "set: /desktop-icons/style\n");
    Tool::Run({"xfconf-query", "-c", "xfce4-desktop", "-p", kFirst + std::string("/last-image"), "-n", "-t", "int",
               "-s", "1"});
    EXPECT_TRUE(AwaitNews(*desktop));
    EXPECT_FALSE(desktop->TakeNews());
}

TEST_F(XfceDesktopTest, WithoutBackdropsThereIsNothingToPaint)
{
    std::filesystem::remove_all(folder.Path("properties/backdrop"));
    const std::unique_ptr<DesktopBackend> desktop = MakeXfceDesktop();
    EXPECT_TRUE(desktop->IsThere());
    EXPECT_EQ(desktop->Read(), std::nullopt);
    EXPECT_FALSE(desktop->Keep().has_value());
}

} // namespace
} // namespace kits
