// SPDX-License-Identifier: MIT
#include "kits/interface/Font.h"

#include "kits/interface/drawing/TextCache.h"

#include <cmath>
#include <cstring>

namespace {

template <size_t Size> void CopyName(char (&to)[Size], const char* from)
{
    size_t length = strnlen(from, Size - 1);
    // A UTF-8 character is copied whole or not at all.
    while (length > 0 && length == Size - 1 && (static_cast<unsigned char>(from[length]) & 0xC0) == 0x80)
        length--;
    std::memset(to, 0, Size);
    std::memcpy(to, from, length);
}

} // namespace

BFont::BFont()
    : BFont(*be_plain_font)
{
}

BFont::BFont(const BFont* font)
    : BFont(font != nullptr ? *font : *be_plain_font)
{
}

status_t BFont::SetFamilyAndStyle(const char* family, const char* style)
{
    if (family == nullptr)
        return B_BAD_VALUE;
    CopyName(fFamily, family);
    if (style != nullptr)
        CopyName(fStyle, style);
    return B_OK;
}

void BFont::SetSize(float size)
{
    if (std::isfinite(size))
        fSize = size;
}

void BFont::SetShear(float shear)
{
    if (std::isfinite(shear))
        fShear = shear;
}

void BFont::SetRotation(float rotation)
{
    if (std::isfinite(rotation))
        fRotation = rotation;
}

void BFont::GetFamilyAndStyle(font_family* family, font_style* style) const
{
    if (family != nullptr)
        std::memcpy(*family, fFamily, sizeof(fFamily));
    if (style != nullptr)
        std::memcpy(*style, fStyle, sizeof(fStyle));
}

void BFont::GetHeight(font_height* height) const
{
    if (height != nullptr)
        *height = kits::TextCache::Height(*this);
}

float BFont::StringWidth(const char* text) const
{
    return text != nullptr && *text != '\0' ? kits::TextCache::Width(*this, text) : 0;
}
