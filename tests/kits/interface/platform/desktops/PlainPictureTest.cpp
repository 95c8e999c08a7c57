// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/PlainPicture.h"

#include "kits/interface/platform/desktops/PictureFile.h"
#include "tests/support/PictureReader.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

namespace kits {
namespace {

constexpr rgb_color kColor = make_color(0xc8, 0x0a, 0x14);

class PlainPictureTest : public testing::Test {
protected:
    void SetUp() override { setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1); }

    /// Returns a four-byte number in a file.
    static unsigned At(const std::string& bytes, size_t place)
    {
        unsigned value = 0;
        for (size_t i = 4; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes.at(place + i));
        return value;
    }

    TempFolder folder{TempFolder::Place::kMemory};
    BuiltPictureReader reader;
};

TEST_F(PlainPictureTest, HasItsColourInEverySize)
{
    for (const auto& [width, height] : {std::pair(1, 1), {255, 2}, {256, 3}, {1280, 800}, {7680, 4320}}) {
        const std::string path = PlainPicture::Put(kColor, width, height);
        ASSERT_EQ(path, folder.Path("kits-desktop/plain-c80a14.bmp"));
        reader.Use();
        // The other colour would show wherever a pixel were missing.
        EXPECT_EQ(AverageOfFile(path, make_color(0, 255, 0)), kColor);
        const std::string bytes = folder.Get("kits-desktop/plain-c80a14.bmp");
        EXPECT_EQ(At(bytes, 2), bytes.size());
        EXPECT_EQ(At(bytes, 18), static_cast<unsigned>(width));
        EXPECT_EQ(At(bytes, 22), static_cast<unsigned>(height));
        EXPECT_LT(bytes.size(), 400000u);
    }
}

TEST_F(PlainPictureTest, SizesAreHeldToTheirRange)
{
    const std::string path = PlainPicture::Put(kColor, -5, 0);
    EXPECT_EQ(AverageOfFile(path, kColor), kColor);
    EXPECT_EQ(At(folder.Get("kits-desktop/plain-c80a14.bmp"), 18), 1u);
}

TEST_F(PlainPictureTest, AFolderThatCannotBeMadeGivesNone)
{
    folder.Put("kits-desktop", "a file");
    EXPECT_EQ(PlainPicture::Put(kColor, 1, 1), "");
    EXPECT_EQ(folder.Get("kits-desktop"), "a file");
}

TEST_F(PlainPictureTest, KnowsItsOwn)
{
    const std::string own = folder.Path("kits-desktop/");
    EXPECT_TRUE(PlainPicture::IsOne(own + "plain-c80a14.bmp"));
    for (const std::string& other :
         {own + "plain-c80a1.bmp", own + "plain-c80a144.bmp", own + "plain-C80A14.bmp", own + "plain-c80a14.png",
          own + "x/plain-c80a14.bmp", own, folder.Path("plain-c80a14.bmp"), std::string()})
        EXPECT_FALSE(PlainPicture::IsOne(other)) << other;
    EXPECT_EQ(PlainPicture::WithoutKind(own + "plain-c80a14.bmp"), own + "plain-c80a14");
}

TEST_F(PlainPictureTest, RemovesWhatIsNotUsed)
{
    PlainPicture::RemoveOthers({});
    const std::string used = PlainPicture::Put(kColor, 1, 1);
    PlainPicture::Put(make_color(1, 2, 3), 1, 1);
    folder.Put("kits-desktop/of the user", "");
    PlainPicture::RemoveOthers({"", used});
    EXPECT_TRUE(folder.Has("kits-desktop/plain-c80a14.bmp"));
    EXPECT_FALSE(folder.Has("kits-desktop/plain-010203.bmp"));
    PlainPicture::RemoveOthers({});
    EXPECT_FALSE(folder.Has("kits-desktop/plain-c80a14.bmp"));
    EXPECT_TRUE(folder.Has("kits-desktop/of the user"));
    std::filesystem::remove(folder.Path("kits-desktop/of the user"));
    PlainPicture::RemoveOthers({});
    EXPECT_FALSE(folder.Has("kits-desktop"));
}

} // namespace
} // namespace kits
