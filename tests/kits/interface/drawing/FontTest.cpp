// SPDX-License-Identifier: MIT
#include "kits/interface/Font.h"

#include "kits/interface/drawing/TextCache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

TEST(Font, StartsAsTheUsersPlainFont)
{
    const BFont font;
    EXPECT_TRUE(font == *be_plain_font);
    EXPECT_GT(font.Size(), 5);
    font_family family;
    font.GetFamilyAndStyle(&family, nullptr);
    EXPECT_STRNE(family, "");
    EXPECT_TRUE(BFont(static_cast<const BFont*>(nullptr)) == *be_plain_font);
}

TEST(Font, KeepsWhatItIsGiven)
{
    BFont font;
    EXPECT_EQ(font.SetFamilyAndStyle("No Such Family", "Oblique"), B_OK);
    font.SetSize(12.25F);
    font.SetShear(75);
    font.SetRotation(-30);
    font.SetSpacing(B_STRING_SPACING);
    font.SetEncoding(B_ISO_8859_1);
    font.SetFace(B_BOLD_FACE | B_UNDERSCORE_FACE);
    font.SetFlags(B_DISABLE_ANTIALIASING);
    font_family family;
    font_style style;
    font.GetFamilyAndStyle(&family, &style);
    EXPECT_STREQ(family, "No Such Family");
    EXPECT_STREQ(style, "Oblique");
    EXPECT_EQ(font.Size(), 12.25F);
    EXPECT_EQ(font.Shear(), 75);
    EXPECT_EQ(font.Rotation(), -30);
    EXPECT_EQ(font.Spacing(), B_STRING_SPACING);
    EXPECT_EQ(font.Encoding(), B_ISO_8859_1);
    EXPECT_EQ(font.Face(), B_BOLD_FACE | B_UNDERSCORE_FACE);
    EXPECT_EQ(font.Flags(), B_DISABLE_ANTIALIASING);
    // Some font shows it nevertheless.
    EXPECT_GT(font.StringWidth("abc"), 0);
}

TEST(Font, IgnoresValuesThatAreNone)
{
    BFont font;
    const float size = font.Size();
    font.SetSize(NAN);
    font.SetSize(INFINITY);
    font.SetShear(NAN);
    font.SetRotation(-INFINITY);
    EXPECT_EQ(font.Size(), size);
    EXPECT_EQ(font.Shear(), 90);
    EXPECT_EQ(font.Rotation(), 0);
    EXPECT_EQ(font.SetFamilyAndStyle(nullptr, "x"), B_BAD_VALUE);
    for (const float odd : {-5.0F, 0.0F, 1e30F}) {
        font.SetSize(odd);
        font_height height;
        font.GetHeight(&height);
        EXPECT_GT(height.ascent, 0);
        EXPECT_LT(height.ascent, 5000);
    }
}

TEST(Font, LongNamesAreCutAtACharacter)
{
    // One length would cut a two-byte character, and at the other it just fits.
    for (const size_t length : {size_t{62}, size_t{61}}) {
        std::string name;
        name.resize(length, 'x');
        const std::string longer = name + "\xC3\xA4z";
        BFont font;
        font.SetFamilyAndStyle(longer.c_str(), "");
        font_family family;
        font.GetFamilyAndStyle(&family, nullptr);
        EXPECT_EQ(std::string(family), length == 62 ? name : name + "\xC3\xA4");
    }
}

TEST(Font, SizesAreLogicalPixels)
{
    BFont font;
    font.SetSize(15);
    font_height height;
    font.GetHeight(&height);
    // Any Latin font of 15 pixels: ascent and descent add up to a little more than its size.
    EXPECT_GE(height.ascent + height.descent, 15);
    EXPECT_LE(height.ascent + height.descent, 24);
    EXPECT_EQ(height.ascent, std::floor(height.ascent));
    BFont twice(font);
    twice.SetSize(30);
    EXPECT_NEAR(twice.StringWidth("Hello, world"), 2 * font.StringWidth("Hello, world"),
                0.1F * twice.StringWidth("Hello, world"));
}

TEST(Font, MeasuresTexts)
{
    const BFont font;
    EXPECT_EQ(font.StringWidth(nullptr), 0);
    EXPECT_EQ(font.StringWidth(""), 0);
    EXPECT_GT(font.StringWidth("ab"), font.StringWidth("a"));
}

TEST(TextCache, CoverageIsTheSameOnEveryScaleOfAskingTwice)
{
    const BFont font;
    const auto first = kits::TextCache::Mask(font, "42.0 %", 1);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->coverage.size(), static_cast<size_t>(first->width * first->height));
    EXPECT_EQ(kits::TextCache::Mask(font, "42.0 %", 1)->coverage, first->coverage);
    // A text without digits is cached, not rasterised again.
    const auto text = kits::TextCache::Mask(font, "Processors", 1);
    EXPECT_EQ(kits::TextCache::Mask(font, "Processors", 1), text);
    const auto large = kits::TextCache::Mask(font, "42.0 %", 2);
    EXPECT_GT(large->width, first->width * 3 / 2);
    EXPECT_EQ(kits::TextCache::Mask(font, "", 1), nullptr);
    EXPECT_EQ(kits::TextCache::Mask(font, "   ", 1), nullptr);
}

TEST(TextCache, FullyCoveredPixelsAreFull)
{
    BFont font;
    font.SetSize(40);
    const auto mask = kits::TextCache::Mask(font, "I", 1);
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(*std::max_element(mask->coverage.begin(), mask->coverage.end()), 255);
    // Cropped to the covered pixels.
    const auto rowIsEmpty = [&](int32 y) {
        const auto row = mask->coverage.begin() + y * mask->width;
        return std::all_of(row, row + mask->width, [](uint8 value) { return value == 0; });
    };
    EXPECT_FALSE(rowIsEmpty(0));
    EXPECT_FALSE(rowIsEmpty(mask->height - 1));
}

TEST(TextCache, ForgetsOldTextsAndStaysRight)
{
    const BFont font;
    const float width = font.StringWidth("text 0");
    for (int32 i = 0; i < 3000; i++) {
        const std::string text = "text " + std::to_string(i);
        ASSERT_NE(kits::TextCache::Mask(font, text, 1), nullptr);
    }
    for (int32 i = 0; i < 40; i++) {
        BFont other;
        other.SetSize(static_cast<float>(8 + i));
        ASSERT_NE(kits::TextCache::Mask(other, "some text", 1), nullptr);
    }
    EXPECT_EQ(font.StringWidth("text 0"), width);
}

TEST(TextCache, ServesAllThreads)
{
    const BFont font;
    std::vector<std::thread> threads;
    std::vector<size_t> sizes(4);
    for (size_t i = 0; i < sizes.size(); i++) {
        threads.emplace_back([&font, &sizes, i] {
            for (int32 round = 0; round < 50; round++)
                sizes[i] = kits::TextCache::Mask(font, "thread text " + std::to_string(round % 7), 1)->coverage.size();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const size_t size : sizes)
        EXPECT_EQ(size, sizes[0]);
}

TEST(FontList, NamesWhatTheMachineHas)
{
    const int32 count = count_font_families();
    ASSERT_GT(count, 0);
    font_family family;
    ASSERT_EQ(get_font_family(0, &family), B_OK);
    EXPECT_STRNE(family, "");
    EXPECT_EQ(get_font_family(count, &family), B_BAD_INDEX);
    EXPECT_EQ(get_font_family(-1, &family), B_BAD_INDEX);
    EXPECT_EQ(get_font_family(0, nullptr), B_BAD_VALUE);

    const int32 styles = count_font_styles(family);
    ASSERT_GT(styles, 0);
    font_style style;
    uint16 face = 0;
    ASSERT_EQ(get_font_style(family, 0, &style, &face), B_OK);
    EXPECT_NE(face, 0);
    EXPECT_EQ(get_font_style(family, styles, &style), B_BAD_INDEX);
    font_family unknown = "No Such Family";
    EXPECT_EQ(count_font_styles(unknown), 0);
    EXPECT_EQ(get_font_style(unknown, 0, &style), B_NAME_NOT_FOUND);
}

namespace {

std::vector<std::string> StylesOf(const font_family family)
{
    std::vector<std::string> styles;
    font_style style;
    for (int32 i = 0; get_font_style(family, i, &style) == B_OK; i++)
        styles.emplace_back(style);
    return styles;
}

std::string RegularStyleOf(const font_family family)
{
    font_style style = "";
    EXPECT_EQ(kits::GetRegularStyle(family, &style), B_OK);
    return style;
}

/// Returns the family and style in which the system shows a font.
std::string ListedAs(const char* family, const char* style, uint16 face = B_REGULAR_FACE)
{
    BFont font;
    font.SetFamilyAndStyle(family, style);
    font.SetFace(face);
    font_family listedFamily = "";
    font_style listedStyle = "";
    EXPECT_EQ(kits::GetListedStyle(font, &listedFamily, &listedStyle), B_OK);
    return std::string(listedFamily) + "/" + listedStyle;
}

constexpr font_family kDejaVu = "DejaVu Sans";

} // namespace

TEST(FontList, StylesStandInASensibleOrder)
{
    std::vector<std::string> styles = StylesOf(kDejaVu);
    if (styles.empty())
        GTEST_SKIP() << "the family is not installed";
    // More styles may be installed.
    const std::vector<std::string> known = {"Book", "Oblique", "Bold", "Bold Oblique"};
    std::erase_if(styles,
                  [&](const auto& style) { return std::find(known.begin(), known.end(), style) == known.end(); });
    std::vector<std::string> expected = known;
    std::erase_if(expected,
                  [&](const auto& style) { return std::find(styles.begin(), styles.end(), style) == styles.end(); });
    EXPECT_EQ(styles, expected);
    const std::vector<std::string> all = StylesOf(kDejaVu);
    bool isCondensed = false;
    for (const std::string& style : all) {
        EXPECT_LE(isCondensed, style.starts_with("Condensed")) << style << " stands behind narrower ones";
        isCondensed = style.starts_with("Condensed");
    }
}

TEST(FontList, TheRegularStyle)
{
    const int32 count = count_font_families();
    for (int32 i = 0; i < count; i++) {
        font_family family;
        ASSERT_EQ(get_font_family(i, &family), B_OK);
        const std::vector<std::string> styles = StylesOf(family);
        const std::string regular = RegularStyleOf(family);
        EXPECT_NE(std::find(styles.begin(), styles.end(), regular), styles.end()) << family;
        for (const char* plain : {"Regular", "Book", "Normal", "Roman"}) {
            if (std::find(styles.begin(), styles.end(), plain) != styles.end()) {
                EXPECT_EQ(regular, plain) << family;
                break;
            }
        }
    }
    font_style style;
    EXPECT_EQ(kits::GetRegularStyle("No Such Family", &style), B_NAME_NOT_FOUND);
    EXPECT_EQ(kits::GetRegularStyle(kDejaVu, nullptr), B_BAD_VALUE);
}

TEST(FontList, EveryFontIsShownInAListedOne)
{
    if (StylesOf(kDejaVu).empty())
        GTEST_SKIP() << "the family is not installed";
    EXPECT_EQ(ListedAs(kDejaVu, "Bold"), "DejaVu Sans/Bold");
    EXPECT_EQ(ListedAs(kDejaVu, ""), "DejaVu Sans/Book");
    EXPECT_EQ(ListedAs(kDejaVu, "", B_BOLD_FACE), "DejaVu Sans/Bold");
    EXPECT_EQ(ListedAs(kDejaVu, "No Such Style"), "DejaVu Sans/Book");
    font_family first;
    ASSERT_EQ(get_font_family(0, &first), B_OK);
    EXPECT_EQ(ListedAs(first, ""), std::string(first) + "/" + RegularStyleOf(first));
    // A missing family is shown in an existing one.
    const std::string other = ListedAs("No Such Family", "");
    EXPECT_GT(other.size(), 1u);
}
