// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/PictureFile.h"

#include "kits/kernel/Clock.h"
#include "kits/kernel/FileDescriptor.h"
#include "tests/kits/interface/platform/desktops/FakeTools.h"
#include "tests/support/Png.h"

#include <QCoreApplication>
#include <QImageReader>

#include <sys/eventfd.h>
#include <sys/stat.h>

#include <chrono>
#include <fstream>
#include <iostream>
#include <thread>
#include <tuple>

using test::Await;

namespace kits {
namespace {

constexpr rgb_color kGround = make_color(10, 200, 60);
/// The colours of tests/data/pictures/half.*: left and right.
constexpr rgb_color kHalves[] = {make_color(200, 10, 20), make_color(3, 4, 250)};
constexpr rgb_color kHalf = make_color(102, 7, 135);

class PictureFileTest : public FakeToolsTest {
protected:
    std::optional<rgb_color> Average(const std::string& name, rgb_color behind = kGround) const
    {
        return AverageOfFile(folder.Path(name), behind);
    }
    /// From now on a script reads the pictures; it records its calls.
    void PutReader(const std::string& script)
    {
        PutTool("reader", script);
        SetPictureReader(folder.Path("bin/reader"));
    }
};

/// Returns whether this machine's toolkit reads the format, possibly through a plugin.
bool IsSupported(const char* format)
{
    int count = 1;
    std::string name = "test";
    char* arguments[] = {name.data(), nullptr};
    const QCoreApplication application(count, arguments);
    return QImageReader::supportedImageFormats().contains(format);
}

TEST_F(PictureFileTest, OfASlideshowIsThatOfItsPicture)
{
    const std::string picture = PutPicture("picture.ppm", kHalves[0], kHalves[0]);
    folder.Put("show.xml",
               "<background><static><duration>5</duration><file>" + picture + "</file></static></background>");
    EXPECT_EQ(Average("show.xml"), kHalves[0]);
    folder.Put("show.xml", "<background/>");
    EXPECT_EQ(Average("show.xml"), std::nullopt);
}

TEST_F(PictureFileTest, EveryFormatIsReadThatTheToolkitReads)
{
    const std::pair<const char*, const char*> files[] = {
        {"half.bmp", "bmp"},   {"half.gif", "gif"},  {"half.jpg", "jpeg"},  {"half.svg", "svg"},
        {"half.svgz", "svgz"}, {"half.tif", "tiff"}, {"half.webp", "webp"}, {"half.xpm", "xpm"}};
    for (const auto& [file, format] : files) {
        if (!IsSupported(format)) {
            std::cout << "left out, as the toolkit of this machine has no plugin for it: " << format << "\n";
            continue;
        }
        const auto average = AverageOfFile(std::string(QEL_TEST_DATA "/pictures/") + file, kGround);
        ASSERT_TRUE(average.has_value()) << file;
        // Some formats round colours.
        EXPECT_NEAR(average->red, kHalf.red, 1) << file;
        EXPECT_NEAR(average->green, kHalf.green, 1) << file;
        EXPECT_NEAR(average->blue, kHalf.blue, 1) << file;
    }
    EXPECT_EQ(AverageOfFile(PutPicture("half.ppm", kHalves[0], kHalves[1]), kGround), kHalf);
}

TEST_F(PictureFileTest, TheNamesEndNeedNotBeTheFormats)
{
    PutPicture("half.png", kHalves[0], kHalves[1]);
    PutPicture("half", kHalves[0], kHalves[1]);
    EXPECT_EQ(Average("half.png"), kHalf);
    EXPECT_EQ(Average("half"), kHalf);
}

/// One of all kinds of PNG.
struct PngCase {
    std::string name;
    png::Kind kind;

    friend void PrintTo(const PngCase& one, std::ostream* out) { *out << one.name; }
};

std::vector<PngCase> PngCases()
{
    std::vector<PngCase> cases;
    const std::vector<std::array<uint8_t, 4>> colors = {{32, 64, 96, 255}, {250, 3, 128, 255}};
    const std::vector<std::array<uint8_t, 4>> faint = {{32, 64, 96, 51}, {250, 3, 128, 204}};
    const std::tuple<const char*, png::ColorType, std::vector<int>> types[] = {{"Grey", png::kGrey, {1, 2, 4, 8, 16}},
                                                                               {"Rgb", png::kRgb, {8, 16}},
                                                                               {"Palette", png::kPalette, {1, 2, 4, 8}},
                                                                               {"GreyAlpha", png::kGreyAlpha, {8, 16}},
                                                                               {"Rgba", png::kRgba, {8, 16}}};
    for (const auto& [name, type, depths] : types) {
        for (const int depth : depths) {
            for (const bool isInterlaced : {false, true}) {
                const std::string full = name + std::to_string(depth) + (isInterlaced ? "Interlaced" : "");
                cases.push_back(
                    {full, {type, depth, isInterlaced, type == png::kPalette ? colors : decltype(colors)()}});
                if (type == png::kPalette)
                    cases.push_back({full + "Transparent", {type, depth, isInterlaced, faint}});
            }
        }
    }
    return cases;
}

class PictureFilePngTest : public PictureFileTest, public testing::WithParamInterface<PngCase> {
protected:
    /// Every third column has the second colour.
    png::Samples At(int x) const
    {
        const png::Kind& kind = GetParam().kind;
        const unsigned most = (1u << kind.depth) - 1;
        const bool isFirst = x % 3 != 0;
        if (kind.type == png::kPalette)
            return {isFirst ? 0u : 1u};
        if (kind.type == png::kGreyAlpha)
            return {isFirst ? most : most / 5, isFirst ? most : most / 3};
        if (kind.type == png::kGrey)
            return {isFirst ? most : most / 3};
        return {isFirst ? most : most / 5, most / 3, isFirst ? 0 : most / 17, isFirst ? most / 5 : most};
    }
    /// Returns red, green, blue and opacity of a column, from 0 to 1.
    std::array<double, 4> ColorAt(int x) const
    {
        const png::Kind& kind = GetParam().kind;
        const png::Samples samples = At(x);
        if (kind.type == png::kPalette) {
            const auto& color = kind.palette[samples[0]];
            return {color[0] / 255.0, color[1] / 255.0, color[2] / 255.0, color[3] / 255.0};
        }
        const double most = (1u << kind.depth) - 1;
        const std::array<double, 4> parts = {samples[0] / most, samples[1] / most, samples[2] / most,
                                             samples[3] / most};
        switch (kind.type) {
        case png::kGrey:
            return {parts[0], parts[0], parts[0], 1};
        case png::kGreyAlpha:
            return {parts[0], parts[0], parts[0], parts[1]};
        case png::kRgb:
            return {parts[0], parts[1], parts[2], 1};
        default:
            return parts;
        }
    }
};

TEST_P(PictureFilePngTest, HasItsAverageOverWhatIsBehind)
{
    // No multiple of eight, so rows end within a byte.
    constexpr int kWidth = 37;
    constexpr int kHeight = 21;
    folder.Put("picture.png", png::Make(kWidth, kHeight, GetParam().kind, [this](int x, int) { return At(x); }));
    const double behind[] = {kGround.red / 255.0, kGround.green / 255.0, kGround.blue / 255.0};
    double sums[3] = {};
    for (int x = 0; x < kWidth; x++) {
        const auto color = ColorAt(x);
        for (size_t i = 0; i < 3; i++)
            sums[i] += color[i] * color[3] + behind[i] * (1 - color[3]);
    }
    const std::optional<rgb_color> average = Average("picture.png");
    ASSERT_TRUE(average.has_value());
    const uint8 parts[] = {average->red, average->green, average->blue};
    for (size_t i = 0; i < 3; i++)
        EXPECT_NEAR(parts[i], sums[i] / kWidth * 255, 0.6) << i;
}

INSTANTIATE_TEST_SUITE_P(, PictureFilePngTest, testing::ValuesIn(PngCases()),
                         [](const auto& one) { return one.param.name; });

TEST_F(PictureFileTest, AHundredMegapixelsAreRead)
{
    folder.Put("rgb.png", png::MakeHuge(10000, 10000, {png::kRgb, 8}, 0x40));
    EXPECT_EQ(Average("rgb.png"), make_color(0x40, 0x40, 0x40));
    const png::Kind stripes = {png::kPalette, 1, false, {{32, 64, 96, 255}, {0, 128, 32, 255}}};
    folder.Put("stripes.png", png::MakeHuge(10000, 10000, stripes, 0x55));
    EXPECT_EQ(Average("stripes.png"), make_color(16, 96, 64));
}

TEST_F(PictureFileTest, LargerOnesThanTheLimitsAreNot)
{
    // 1 GB of memory in a file of a few megabytes, and more pixels than the limit in the smallest ones.
    folder.Put("deep.png", png::MakeHuge(12000, 12000, {png::kRgba, 16}, 0x40));
    EXPECT_EQ(Average("deep.png"), std::nullopt);
    folder.Put("many.png", png::MakeHuge(40000, 40000, {png::kGrey, 1}, 0x40));
    EXPECT_EQ(Average("many.png"), std::nullopt);
    folder.Put("file.ppm", "P6 64 64 255\n");
    std::filesystem::resize_file(folder.Path("file.ppm"), 300 * 1024 * 1024);
    EXPECT_EQ(Average("file.ppm"), std::nullopt);
}

TEST_F(PictureFileTest, OneThatWouldTakeTooLongIsNotRead)
{
    if (!IsSupported("svg"))
        GTEST_SKIP() << "the toolkit of this machine has no plugin for drawings";
    std::string drawing = R"(<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64">)";
    for (int i = 0; i < 400000; i++)
        drawing += R"(<rect width="64" height="64" fill-opacity="0.5"/>)";
    folder.Put("drawing.svg", drawing + "</svg>");
    EXPECT_EQ(Average("drawing.svg"), std::nullopt);
}

TEST_F(PictureFileTest, WhatIsNoPictureHasNoAverage)
{
    const std::string picture = png::Make(64, 64, {png::kRgb, 8}, [](int x, int y) {
        return png::Samples{static_cast<unsigned>(x * y % 256), static_cast<unsigned>(x * 37 % 256), 7};
    });
    folder.Put("empty.png", "");
    folder.Put("text.png", "no picture");
    folder.Put("head.png", picture.substr(0, 20));
    folder.Put("half.png", picture.substr(0, picture.size() / 2));
    std::string broken = picture;
    broken[picture.size() / 2] ^= 0x10;
    folder.Put("broken.png", broken);
    std::filesystem::create_symlink("nowhere", folder.Path("link.png"));
    std::filesystem::create_directory(folder.Path("folder"));
    ASSERT_EQ(mkfifo(folder.Path("fifo.png").c_str(), 0600), 0);
    for (const char* name : {"empty.png", "text.png", "head.png", "half.png", "broken.png", "link.png", "folder",
                             "fifo.png", "nothing.png"})
        EXPECT_EQ(Average(name), std::nullopt) << name;
    // A device without an end, a file that exists and cannot be read, and invalid names.
    for (const char* path : {"/dev/zero", "/proc/self/mem", "", "/", "file:", "file://", "file:///%zz", "%"})
        EXPECT_EQ(AverageOfFile(path, kGround), std::nullopt) << path;
    if (geteuid() != 0) {
        folder.Put("secret.png", picture);
        std::filesystem::permissions(folder.Path("secret.png"), std::filesystem::perms::none);
        EXPECT_EQ(Average("secret.png"), std::nullopt);
    }
    folder.Put("whole.png", picture);
    EXPECT_NE(Average("whole.png"), std::nullopt);
}

TEST_F(PictureFileTest, AnyByteMayBeWrong)
{
    // No reader may do worse than end; the average of the rest of a picture is as good as none.
    for (const char* name : {"half.jpg", "half.gif", "half.bmp", "half.svg"}) {
        std::ifstream file(std::string(QEL_TEST_DATA "/pictures/") + name, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        ASSERT_FALSE(bytes.empty()) << name;
        for (size_t i = 1; i <= 10; i++) {
            std::string wrong = bytes;
            wrong[i * 7919 % wrong.size()] ^= static_cast<char>(1 << i % 8);
            folder.Put(name, wrong.substr(0, i % 2 == 0 ? wrong.size() : wrong.size() * i / 11));
            Average(name);
        }
    }
    PutPicture("half.ppm", kHalves[0], kHalves[1]);
    EXPECT_EQ(Average("half.ppm"), kHalf);
}

TEST_F(PictureFileTest, OfAFolderTheFirstPictureCounts)
{
    std::filesystem::create_directories(folder.Path("package/contents/images"));
    folder.Put("package/metadata.json", "{}");
    EXPECT_EQ(Average("package"), std::nullopt);
    PutPicture("package/screenshot.png", kHalves[1], kHalves[1]);
    EXPECT_EQ(Average("package"), kHalves[1]);
    PutPicture("package/contents/images/2.png", kHalves[0], kHalves[0]);
    PutPicture("package/contents/images/3.png", kGround, kGround);
    folder.Put("package/contents/images/1.txt", "no picture");
    EXPECT_EQ(Average("package"), kHalves[0]);
    EXPECT_EQ(AverageOfFile("file://" + folder.Path("package"), kGround), kHalves[0]);
}

TEST_F(PictureFileTest, AnAddressMayBeCoded)
{
    const std::string path = PutPicture("a b%41\xC3\xA4.ppm", kHalves[0], kHalves[1]);
    EXPECT_EQ(AverageOfFile(path, kGround), kHalf);
    for (const std::string host : {"", "//", "//localhost"})
        EXPECT_EQ(AverageOfFile("file:" + host + folder.Path("a%20b%2541%C3%a4.ppm"), kGround), kHalf) << host;
}

TEST_F(PictureFileTest, IsReadAgainOnlyWhenItHasChanged)
{
    PutReader("echo 0 0 25700 65535");
    folder.Put("picture", "1");
    folder.Put("other", "1");
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(Average("picture"), make_color(0, 0, 100));
        EXPECT_EQ(Average("other"), make_color(0, 0, 100));
    }
    EXPECT_EQ(TakeCalls().size(), 2u);
    folder.Put("picture", "12");
    Average("picture");
    EXPECT_EQ(TakeCalls(), std::vector<std::string>{"reader " + folder.Path("picture")});
    std::filesystem::last_write_time(folder.Path("picture"),
                                     std::filesystem::last_write_time(folder.Path("picture")) + std::chrono::hours(1));
    Average("picture");
    EXPECT_EQ(TakeCalls().size(), 1u);
    // Another file under the old name, of the same size and age.
    std::filesystem::copy_file(folder.Path("picture"), folder.Path("new"));
    std::filesystem::last_write_time(folder.Path("new"), std::filesystem::last_write_time(folder.Path("picture")));
    std::filesystem::rename(folder.Path("new"), folder.Path("picture"));
    Average("picture");
    EXPECT_EQ(TakeCalls().size(), 1u);
    Average("picture");
    EXPECT_EQ(TakeCalls().size(), 0u);
}

TEST_F(PictureFileTest, OneThatCannotBeReadIsNotTriedAgainUntilItHasChanged)
{
    folder.Put("picture", "1");
    for (const char* script : {"exit 1", "kill -SEGV $$", "kill -XCPU $$", "echo nonsense", "echo 1 2 3", "echo",
                               "echo 65536 0 0 65535", "echo -1 0 0 65535", "exec yes"}) {
        PutReader(script);
        EXPECT_EQ(Average("picture"), std::nullopt) << script;
        EXPECT_EQ(Average("picture"), std::nullopt) << script;
        EXPECT_EQ(TakeCalls().size(), 1u) << script;
    }
}

TEST_F(PictureFileTest, IsGivenUpWhenItsThreadHasToEnd)
{
    PutReader("test -e '" + folder.Path("go") + "' && echo 0 0 25700 65535 || exec sleep 1000");
    folder.Put("picture", "1");
    const FileDescriptor stop(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    std::thread worker([&] {
        const PictureStop stopping(stop.Get());
        EXPECT_EQ(Average("picture"), std::nullopt);
    });
    EXPECT_TRUE(Await([&] { return folder.Get("calls").find('\n') != std::string::npos; }));
    eventfd_write(stop.Get(), 1);
    worker.join();
    // The stop was not the picture's fault: it is read again, unlike after a time-out.
    folder.Put("go", "");
    EXPECT_EQ(Average("picture"), make_color(0, 0, 100));
}

TEST_F(PictureFileTest, WithoutItsReaderThereIsNone)
{
    PutPicture("half.ppm", kHalves[0], kHalves[1]);
    SetPictureReader(folder.Path("bin/none"));
    EXPECT_EQ(Average("half.ppm"), std::nullopt);
    reader.Use();
    EXPECT_EQ(Average("half.ppm"), kHalf);
}

} // namespace
} // namespace kits
