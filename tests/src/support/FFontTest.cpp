// SPDX-License-Identifier: MIT
#include "src/support/FFont.h"

#include "kits/application/Message.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

/// Returns a font that differs from the default one in everything.
FFont SpecialFont()
{
    FFont font;
    font.SetFamilyAndStyle("Some Family", "Oblique");
    font.SetSize(17.25f);
    font.SetShear(80.1f);
    font.SetRotation(33.3f);
    font.SetFlags(0x01020304);
    font.SetFace(0x2041);
    font.SetSpacing(3);
    font.SetEncoding(1);
    font.SetMask(0xA5);
    return font;
}

std::string FamilyOf(const BFont& font)
{
    font_family family;
    font_style style;
    font.GetFamilyAndStyle(&family, &style);
    return family;
}

std::string StyleOf(const BFont& font)
{
    font_family family;
    font_style style;
    font.GetFamilyAndStyle(&family, &style);
    return style;
}

std::vector<uint8> Flattened(const FFont& font)
{
    std::vector<uint8> bytes(152, 0xEE);
    EXPECT_EQ(font.Flatten(bytes.data(), 152), B_OK);
    return bytes;
}

void PutNumber(std::vector<uint8>& bytes, size_t offset, uint32 value)
{
    for (size_t i = 0; i < 4; i++)
        bytes[offset + i] = static_cast<uint8>(value >> (24 - 8 * i));
}

} // namespace

TEST(FFont, IsTheDefaultFontWithTheWholeMask)
{
    const FFont font;
    EXPECT_EQ(font.Mask(), 255u);
    EXPECT_TRUE(static_cast<const BFont&>(font) == BFont());
    EXPECT_TRUE(font.IsFixedSize());
    EXPECT_EQ(font.TypeCode(), 0x464F4E74u);
    EXPECT_EQ(font.FlattenedSize(), 152);
    EXPECT_TRUE(font.AllowsTypeCode('FONt'));
    EXPECT_FALSE(font.AllowsTypeCode('FONT'));
}

TEST(FFont, CopiesWithAndWithoutAMask)
{
    const FFont special = SpecialFont();
    const BFont& plain = special;
    EXPECT_EQ(FFont(special).Mask(), 0xA5u);
    EXPECT_EQ(FFont(&special).Mask(), 0xA5u);
    EXPECT_EQ(FFont(plain).Mask(), 255u);
    EXPECT_EQ(FFont(&plain).Mask(), 255u);
    EXPECT_EQ(FFont(plain).Size(), 17.25f);
    EXPECT_EQ(FFont(&special).Size(), 17.25f);

    FFont assigned;
    assigned = special;
    EXPECT_EQ(assigned.Mask(), 0xA5u);
    EXPECT_EQ(assigned.Size(), 17.25f);
    assigned = plain;
    EXPECT_EQ(assigned.Mask(), 255u);

    const FFont* none = nullptr;
    EXPECT_EQ(FFont(none).Mask(), 255u);
    EXPECT_TRUE(static_cast<const BFont&>(FFont(none)) == BFont());
    const BFont* noFont = nullptr;
    EXPECT_TRUE(static_cast<const BFont&>(FFont(noFont)) == BFont());
}

TEST(FFont, FlattensToTheByte)
{
    const std::vector<uint8> bytes = Flattened(SpecialFont());
    std::vector<uint8> expected(152, 0);
    PutNumber(expected, 0, 0xA5);
    PutNumber(expected, 4, std::bit_cast<uint32>(17.25f));
    PutNumber(expected, 8, std::bit_cast<uint32>(80.1f));
    PutNumber(expected, 12, std::bit_cast<uint32>(33.3f));
    PutNumber(expected, 16, 0x01020304);
    expected[20] = 0x20;
    expected[21] = 0x41;
    expected[22] = 3;
    expected[23] = 1;
    std::memcpy(&expected[24], "Some Family", 11);
    std::memcpy(&expected[88], "Oblique", 7);
    EXPECT_EQ(bytes, expected);
}

TEST(FFont, ComesBackAsItWas)
{
    const FFont special = SpecialFont();
    const std::vector<uint8> bytes = Flattened(special);
    FFont back;
    ASSERT_EQ(back.Unflatten('FONt', bytes.data(), 152), B_OK);
    EXPECT_TRUE(static_cast<const BFont&>(back) == special);
    EXPECT_EQ(FamilyOf(back), "Some Family");
    EXPECT_EQ(StyleOf(back), "Oblique");
    EXPECT_EQ(std::bit_cast<uint32>(back.Size()), std::bit_cast<uint32>(17.25f));
    EXPECT_EQ(std::bit_cast<uint32>(back.Shear()), std::bit_cast<uint32>(80.1f));
    EXPECT_EQ(std::bit_cast<uint32>(back.Rotation()), std::bit_cast<uint32>(33.3f));
    EXPECT_EQ(back.Flags(), 0x01020304u);
    EXPECT_EQ(back.Face(), 0x2041);
    EXPECT_EQ(back.Spacing(), 3);
    EXPECT_EQ(back.Encoding(), 1);
    EXPECT_EQ(back.Mask(), 0xA5u);
    EXPECT_EQ(Flattened(back), bytes);
}

TEST(FFont, RefusesAShortBuffer)
{
    std::vector<uint8> bytes = Flattened(SpecialFont());
    FFont font;
    EXPECT_EQ(font.Flatten(bytes.data(), 151), B_BAD_VALUE);
    EXPECT_EQ(font.Flatten(nullptr, 152), B_BAD_VALUE);
    EXPECT_EQ(bytes, Flattened(SpecialFont()));
    EXPECT_EQ(font.Unflatten('FONt', bytes.data(), 151), B_BAD_VALUE);
    EXPECT_EQ(font.Unflatten('FONt', nullptr, 152), B_BAD_VALUE);
    EXPECT_EQ(font.Mask(), 255u);
    EXPECT_TRUE(static_cast<const BFont&>(font) == BFont());
}

TEST(FFont, RefusesAnotherTypeAndStaysAsItWas)
{
    const std::vector<uint8> bytes = Flattened(FFont());
    FFont font = SpecialFont();
    EXPECT_EQ(font.Unflatten('CSTR', bytes.data(), 152), B_BAD_TYPE);
    EXPECT_EQ(font.Unflatten('CSTR', bytes.data(), 151), B_BAD_TYPE);
    EXPECT_EQ(font.Mask(), 0xA5u);
    EXPECT_TRUE(static_cast<const BFont&>(font) == SpecialFont());
}

TEST(FFont, ALongerBufferIsTakenToo)
{
    std::vector<uint8> bytes = Flattened(SpecialFont());
    bytes.resize(300, 0xFF);
    FFont font;
    EXPECT_EQ(font.Unflatten('FONt', bytes.data(), 300), B_OK);
    EXPECT_TRUE(static_cast<const BFont&>(font) == SpecialFont());
}

TEST(FFont, NumbersThatNoFontHasStayAsTheDefaultHasThem)
{
    const BFont plain;
    for (float number : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity()}) {
        std::vector<uint8> bytes = Flattened(SpecialFont());
        for (size_t offset : {4, 8, 12})
            PutNumber(bytes, offset, std::bit_cast<uint32>(number));
        FFont font = SpecialFont();
        ASSERT_EQ(font.Unflatten('FONt', bytes.data(), 152), B_OK);
        EXPECT_EQ(font.Size(), plain.Size());
        EXPECT_EQ(font.Shear(), plain.Shear());
        EXPECT_EQ(font.Rotation(), plain.Rotation());
        EXPECT_EQ(FamilyOf(font), "Some Family");
    }
}

TEST(FFont, NamesWithoutAnEndAreCut)
{
    std::vector<uint8> bytes = Flattened(SpecialFont());
    std::memset(&bytes[24], 'F', 64);
    std::memset(&bytes[88], 'S', 64);
    FFont font;
    ASSERT_EQ(font.Unflatten('FONt', bytes.data(), 152), B_OK);
    EXPECT_EQ(FamilyOf(font), std::string(63, 'F'));
    EXPECT_EQ(StyleOf(font), std::string(63, 'S'));
}

TEST(FFont, TheWholeMaskAssignsTheWholeFont)
{
    FFont special = SpecialFont();
    special.SetMask(255);
    BFont target;
    special.UpdateTo(&target, 255);
    EXPECT_TRUE(target == special);
}

TEST(FFont, AllButShearAndRotation)
{
    FFont special = SpecialFont();
    special.SetMask(255);
    BFont target;
    special.UpdateTo(&target, 243);
    EXPECT_EQ(target.Shear(), BFont().Shear());
    EXPECT_EQ(target.Rotation(), BFont().Rotation());
    target.SetShear(special.Shear());
    target.SetRotation(special.Rotation());
    EXPECT_TRUE(target == special);
}

TEST(FFont, EachBitIsOneProperty)
{
    FFont special = SpecialFont();
    special.SetMask(255);
    for (uint32 bit = 1; bit <= 128; bit *= 2) {
        BFont target;
        special.UpdateTo(&target, bit);
        EXPECT_EQ(FamilyOf(target) == "Some Family", bit == FFont::kFamilyAndStyle) << bit;
        EXPECT_EQ(StyleOf(target) == "Oblique", bit == FFont::kFamilyAndStyle) << bit;
        EXPECT_EQ(target.Size() == special.Size(), bit == FFont::kSize) << bit;
        EXPECT_EQ(target.Shear() == special.Shear(), bit == FFont::kShear) << bit;
        EXPECT_EQ(target.Rotation() == special.Rotation(), bit == FFont::kRotation) << bit;
        EXPECT_EQ(target.Spacing() == special.Spacing(), bit == FFont::kSpacing) << bit;
        EXPECT_EQ(target.Encoding() == special.Encoding(), bit == FFont::kEncoding) << bit;
        EXPECT_EQ(target.Face() == special.Face(), bit == FFont::kFace) << bit;
        EXPECT_EQ(target.Flags() == special.Flags(), bit == FFont::kFlags) << bit;
    }
}

TEST(FFont, ItsOwnMaskLimitsWhatIsApplied)
{
    FFont special = SpecialFont();
    special.SetMask(FFont::kSize);
    BFont target;
    special.UpdateTo(&target, 255);
    BFont expected;
    expected.SetSize(17.25f);
    EXPECT_TRUE(target == expected);
}

TEST(FFont, TheTargetsMaskGainsWhatWasApplied)
{
    FFont special = SpecialFont();
    special.SetMask(FFont::kSize | FFont::kFace);
    FFont target;
    target.SetMask(FFont::kShear);
    special.UpdateTo(&target, FFont::kSize | FFont::kFlags);
    EXPECT_EQ(target.Mask(), uint32(FFont::kShear | FFont::kSize));
    EXPECT_EQ(target.Size(), 17.25f);
    EXPECT_EQ(target.Face(), BFont().Face());

    FFont other;
    other.SetMask(0);
    other.UpdateFrom(&special, 255);
    EXPECT_EQ(other.Mask(), uint32(FFont::kSize | FFont::kFace));
    EXPECT_EQ(other.Face(), special.Face());
}

TEST(FFont, NullDoesNothing)
{
    const FFont special = SpecialFont();
    special.UpdateTo(static_cast<BFont*>(nullptr), 255);
    special.UpdateTo(static_cast<FFont*>(nullptr), 255);
    FFont target = SpecialFont();
    target.UpdateFrom(nullptr, 255);
    EXPECT_EQ(target.Mask(), 0xA5u);
    EXPECT_TRUE(static_cast<const BFont&>(target) == special);
}

TEST(FFont, GoesThroughAMessageWithItsMask)
{
    const FFont special = SpecialFont();
    BMessage message;
    EXPECT_EQ(AddMessageFont(&message, "font", &special), B_OK);
    const BFont plain = special;
    EXPECT_EQ(AddMessageFont(&message, "font", &plain), B_OK);

    type_code type = 0;
    int32 count = 0;
    ASSERT_EQ(message.GetInfo("font", &type, &count), B_OK);
    EXPECT_EQ(type, type_code('FONt'));
    EXPECT_EQ(count, 2);
    const void* data = nullptr;
    ssize_t size = 0;
    ASSERT_EQ(message.FindData("font", 'FONt', &data, &size), B_OK);
    EXPECT_EQ(size, 152);

    FFont found;
    ASSERT_EQ(FindMessageFont(&message, "font", 0, &found), B_OK);
    EXPECT_EQ(found.Mask(), 0xA5u);
    EXPECT_TRUE(static_cast<const BFont&>(found) == special);
    ASSERT_EQ(FindMessageFont(&message, "font", 1, &found), B_OK);
    EXPECT_EQ(found.Mask(), 255u);
}

TEST(FFont, AStoredSizeChangesOnlyTheSize)
{
    FFont special = SpecialFont();
    special.SetMask(FFont::kSize);
    BMessage message;
    AddMessageFont(&message, "font", &special);
    BFont target;
    target.SetRotation(12);
    ASSERT_EQ(FindMessageFont(&message, "font", 0, &target), B_OK);
    BFont expected;
    expected.SetRotation(12);
    expected.SetSize(17.25f);
    EXPECT_TRUE(target == expected);
}

TEST(FFont, WhatIsNotInTheMessageChangesNothing)
{
    BMessage message;
    message.AddString("text", "no font");
    FFont font = SpecialFont();
    EXPECT_EQ(FindMessageFont(&message, "font", 0, &font), B_NAME_NOT_FOUND);
    EXPECT_EQ(FindMessageFont(&message, "text", 0, &font), B_BAD_TYPE);
    BFont plain;
    EXPECT_EQ(FindMessageFont(&message, "font", 0, &plain), B_NAME_NOT_FOUND);
    EXPECT_TRUE(static_cast<const BFont&>(font) == SpecialFont());
    EXPECT_EQ(font.Mask(), 0xA5u);
    EXPECT_TRUE(plain == BFont());
}

TEST(FFont, MessageFunctionsRefuseNull)
{
    BMessage message;
    FFont font;
    BFont plain;
    EXPECT_EQ(AddMessageFont(nullptr, "font", &font), B_BAD_VALUE);
    EXPECT_EQ(AddMessageFont(nullptr, "font", &plain), B_BAD_VALUE);
    EXPECT_EQ(AddMessageFont(&message, "font", static_cast<const FFont*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(AddMessageFont(&message, "font", static_cast<const BFont*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(FindMessageFont(nullptr, "font", 0, &font), B_BAD_VALUE);
    EXPECT_EQ(FindMessageFont(nullptr, "font", 0, &plain), B_BAD_VALUE);
    EXPECT_EQ(FindMessageFont(&message, "font", 0, static_cast<FFont*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(FindMessageFont(&message, "font", 0, static_cast<BFont*>(nullptr)), B_BAD_VALUE);
    EXPECT_TRUE(message.IsEmpty());
}
