// SPDX-License-Identifier: MIT
#include "src/support/FFont.h"

#include "kits/application/Message.h"

#include <bit>
#include <cstring>

namespace {

constexpr size_t kNameLength = 64;
static_assert(sizeof(font_family) == kNameLength && sizeof(font_style) == kNameLength);

/// Writes numbers of the flattened form one after the other, big-endian.
class Writer {
public:
    explicit Writer(void* buffer)
        : fAt(static_cast<uint8*>(buffer))
    {
    }

    template <typename T> void Put(T value)
    {
        for (size_t i = sizeof(T); i-- > 0;)
            *fAt++ = static_cast<uint8>(value >> (8 * i));
    }
    void Put(float value) { Put(std::bit_cast<uint32>(value)); }
    void Put(const char (&name)[kNameLength])
    {
        std::memcpy(fAt, name, strnlen(name, kNameLength - 1));
        fAt += kNameLength;
    }

private:
    uint8* fAt;
};

class Reader {
public:
    explicit Reader(const void* buffer)
        : fAt(static_cast<const uint8*>(buffer))
    {
    }

    template <typename T> T Get()
    {
        uint32 value = 0;
        for (size_t i = 0; i < sizeof(T); i++)
            value = value << 8 | *fAt++;
        return static_cast<T>(value);
    }
    float GetFloat() { return std::bit_cast<float>(Get<uint32>()); }
    void Get(char (&name)[kNameLength])
    {
        std::memcpy(name, fAt, kNameLength);
        name[kNameLength - 1] = '\0';
        fAt += kNameLength;
    }

private:
    const uint8* fAt;
};

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

    std::memset(buffer, 0, kFlattenedSize);
    Writer writer(buffer);
    writer.Put(fMask);
    writer.Put(Size());
    writer.Put(Shear());
    writer.Put(Rotation());
    writer.Put(Flags());
    writer.Put(Face());
    writer.Put(Spacing());
    writer.Put(Encoding());
    writer.Put(family);
    writer.Put(style);
    return B_OK;
}

status_t FFont::Unflatten(type_code code, const void* buffer, ssize_t size)
{
    if (!AllowsTypeCode(code))
        return B_BAD_TYPE;
    if (buffer == nullptr || size < kFlattenedSize)
        return B_BAD_VALUE;

    *this = BFont();
    Reader reader(buffer);
    fMask = reader.Get<uint32>();
    SetSize(reader.GetFloat());
    SetShear(reader.GetFloat());
    SetRotation(reader.GetFloat());
    SetFlags(reader.Get<uint32>());
    SetFace(reader.Get<uint16>());
    SetSpacing(reader.Get<uint8>());
    SetEncoding(reader.Get<uint8>());
    font_family family;
    font_style style;
    reader.Get(family);
    reader.Get(style);
    SetFamilyAndStyle(family, style);
    return B_OK;
}

void FFont::UpdateTo(BFont* target, uint32 mask) const
{
    if (target == nullptr)
        return;
    const uint32 selected = mask & fMask;
    if ((selected & kAll) == kAll)
        target->BFont::operator=(*this);
    else
        target->Apply(*this, selected);
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
    if (message == nullptr || font == nullptr)
        return B_BAD_VALUE;
    const FFont whole(*font);
    return message->AddFlat(name, &whole);
}

status_t FindMessageFont(const BMessage* message, const char* name, int32 index, FFont* font)
{
    if (message == nullptr || font == nullptr)
        return B_BAD_VALUE;
    return message->FindFlat(name, font, index);
}

status_t FindMessageFont(const BMessage* message, const char* name, int32 index, BFont* font)
{
    if (message == nullptr || font == nullptr)
        return B_BAD_VALUE;
    FFont found;
    const status_t status = message->FindFlat(name, &found, index);
    if (status == B_OK)
        found.UpdateTo(font, FFont::kAll);
    return status;
}
