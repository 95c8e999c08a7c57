// SPDX-License-Identifier: MIT
#include "src/support/FFont.h"

#include "kits/application/Message.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace {

/// The flattened form. Its numbers are big-endian, so those of two or four bytes are swapped here.
struct Flat {
    uint32 mask, size, shear, rotation, flags;
    uint16 face;
    uint8 spacing, encoding;
    font_family family;
    font_style style;
};
static_assert(sizeof(Flat) == FFont::kFlattenedSize);
static_assert(std::endian::native == std::endian::little, "the flattened form is big-endian");

/// Converts between this machine's order of bytes and the flattened form's, which is big-endian.
template <typename T> T Swapped(T number)
{
    auto bytes = std::bit_cast<std::array<uint8, sizeof(T)>>(number);
    std::reverse(bytes.begin(), bytes.end());
    return std::bit_cast<T>(bytes);
}

uint32 FromFloat(float number)
{
    return Swapped(std::bit_cast<uint32>(number));
}

float ToFloat(uint32 flat)
{
    return std::bit_cast<float>(Swapped(flat));
}

} // namespace

FFont::FFont() = default;

FFont::FFont(const BFont& font)
    : BFont(font)
{
}

FFont::FFont(const BFont* font)
    : BFont(font)
{
}

FFont::FFont(const FFont& font) = default;

FFont::FFont(const FFont* font)
    : BFont(font)
    , fMask(font != nullptr ? font->fMask : kAll)
{
}

FFont& FFont::operator=(const FFont& font) = default;

FFont& FFont::operator=(const BFont& font)
{
    BFont::operator=(font);
    fMask = kAll;
    return *this;
}

status_t FFont::Flatten(void* buffer, ssize_t size) const
{
    if (buffer == nullptr || size < kFlattenedSize)
        return B_BAD_VALUE;
    font_family family;
    font_style style;
    GetFamilyAndStyle(&family, &style);

    Flat flat = {};
    flat.mask = Swapped(fMask);
    flat.size = FromFloat(Size());
    flat.shear = FromFloat(Shear());
    flat.rotation = FromFloat(Rotation());
    flat.flags = Swapped(Flags());
    flat.face = Swapped(Face());
    flat.spacing = Spacing();
    flat.encoding = Encoding();
    std::memcpy(flat.family, family, strnlen(family, sizeof(family) - 1));
    std::memcpy(flat.style, style, strnlen(style, sizeof(style) - 1));
    std::memcpy(buffer, &flat, sizeof(flat));
    return B_OK;
}

status_t FFont::Unflatten(type_code code, const void* buffer, ssize_t size)
{
    if (!AllowsTypeCode(code))
        return B_BAD_TYPE;
    if (buffer == nullptr || size < kFlattenedSize)
        return B_BAD_VALUE;

    Flat flat;
    std::memcpy(&flat, buffer, sizeof(flat));
    flat.family[sizeof(flat.family) - 1] = '\0';
    flat.style[sizeof(flat.style) - 1] = '\0';
    *this = BFont();
    fMask = Swapped(flat.mask);
    SetSize(ToFloat(flat.size));
    SetShear(ToFloat(flat.shear));
    SetRotation(ToFloat(flat.rotation));
    SetFlags(Swapped(flat.flags));
    SetFace(Swapped(flat.face));
    SetSpacing(flat.spacing);
    SetEncoding(flat.encoding);
    SetFamilyAndStyle(flat.family, flat.style);
    return B_OK;
}

void FFont::UpdateTo(BFont* target, uint32 mask) const
{
    if (target == nullptr)
        return;
    const uint32 selected = mask & fMask;
    if (selected & kFamilyAndStyle) {
        font_family family;
        font_style style;
        GetFamilyAndStyle(&family, &style);
        target->SetFamilyAndStyle(family, style);
    }
    if (selected & kSize)
        target->SetSize(Size());
    if (selected & kShear)
        target->SetShear(Shear());
    if (selected & kRotation)
        target->SetRotation(Rotation());
    if (selected & kSpacing)
        target->SetSpacing(Spacing());
    if (selected & kEncoding)
        target->SetEncoding(Encoding());
    if (selected & kFace)
        target->SetFace(Face());
    if (selected & kFlags)
        target->SetFlags(Flags());
}

void FFont::UpdateTo(FFont* target, uint32 mask) const
{
    if (target == nullptr)
        return;
    UpdateTo(static_cast<BFont*>(target), mask);
    target->fMask |= mask & fMask;
}

void FFont::UpdateFrom(const FFont* source, uint32 mask)
{
    if (source != nullptr)
        source->UpdateTo(this, mask);
}

status_t AddMessageFont(BMessage* message, const char* name, const FFont* font)
{
    if (message == nullptr || font == nullptr)
        return B_BAD_VALUE;
    return message->AddFlat(name, font);
}

status_t AddMessageFont(BMessage* message, const char* name, const BFont* font)
{
    if (font == nullptr)
        return B_BAD_VALUE;
    const FFont whole(*font);
    return AddMessageFont(message, name, &whole);
}

status_t FindMessageFont(const BMessage* message, const char* name, int32 index, FFont* font)
{
    if (message == nullptr || font == nullptr)
        return B_BAD_VALUE;
    return message->FindFlat(name, font, index);
}

status_t FindMessageFont(const BMessage* message, const char* name, int32 index, BFont* font)
{
    FFont found;
    const status_t status = font != nullptr ? FindMessageFont(message, name, index, &found) : B_BAD_VALUE;
    if (status == B_OK)
        found.UpdateTo(font, FFont::kAll);
    return status;
}
