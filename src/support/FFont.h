// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Font.h"
#include "kits/support/Flattenable.h"
#include "kits/support/SupportDefs.h"

class BMessage;

/// A font that can be stored in a message, with a mask of the properties that it carries. Applied to another font, it
/// changes only those.
///
/// Flattened it has the type 'FONt' and 152 bytes, numbers big-endian: mask, size, shear, rotation, flags (4 bytes
/// each, the middle three floats), face (2), spacing (1), encoding (1), family and style (64 each, zero-terminated and
/// padded). All properties are written whatever the mask is.
class FFont : public BFont, public BFlattenable {
public:
    static constexpr type_code kTypeCode = 'FONt';
    static constexpr ssize_t kFlattenedSize = 152;

    /// Bits of the mask.
    enum : uint32 {
        kFamilyAndStyle = 1,
        kSize = 2,
        kShear = 4,
        kRotation = 8,
        kSpacing = 16,
        kEncoding = 32,
        kFace = 64,
        kFlags = 128,
        kAll = 255
    };

    /// The default font, or a copy of the given one, with all properties in the mask. Copies an FFont's mask, too. A
    /// null pointer gives the default font.
    FFont();
    FFont(const BFont& font);
    explicit FFont(const BFont* font);
    FFont(const FFont& font);
    explicit FFont(const FFont* font);

    /// Copies an FFont's mask, too; for a plain font the mask becomes kAll.
    FFont& operator=(const FFont& font);
    FFont& operator=(const BFont& font);

    uint32 Mask() const { return fMask; }
    void SetMask(uint32 mask) { fMask = mask; }

    bool IsFixedSize() const override { return true; }
    type_code TypeCode() const override { return kTypeCode; }
    ssize_t FlattenedSize() const override { return kFlattenedSize; }
    bool AllowsTypeCode(type_code code) const override { return code == kTypeCode; }

    /// @return B_OK; B_BAD_VALUE if the buffer has fewer than 152 bytes
    status_t Flatten(void* buffer, ssize_t size) const override;

    /// Replaces font and mask. The bytes may come from anywhere: a size, shear or rotation that is not finite keeps its
    /// default, and names end after at most 64 bytes.
    /// @return B_OK; B_BAD_TYPE for a type other than 'FONt', B_BAD_VALUE for fewer than 152 bytes: nothing changed
    status_t Unflatten(type_code code, const void* buffer, ssize_t size) override;

    /// Applies the properties in `mask` that this font carries to the target; null does nothing. If those are
    /// all eight the whole font is assigned. An FFont's mask gains the applied ones.
    void UpdateTo(BFont* target, uint32 mask) const;
    void UpdateTo(FFont* target, uint32 mask) const;

    /// The reverse of UpdateTo(), for owners: takes the properties in `mask` that the source carries, and adds them to
    /// this mask; null does nothing.
    void UpdateFrom(const FFont* source, uint32 mask);

private:
    uint32 fMask = kAll;
};

/// Adds the font as a flattened object, including its mask; a plain font's mask is kAll.
/// @return B_BAD_VALUE if the message or the font is null, otherwise the message's status
status_t AddMessageFont(BMessage* message, const char* name, const FFont* font);
status_t AddMessageFont(BMessage* message, const char* name, const BFont* font); ///< for plain fonts of others

/// Finds a font that AddMessageFont() added. An FFont takes font and mask; in a plain font only the properties in the
/// stored mask change. An error changes nothing.
/// @return B_BAD_VALUE if the message or the font is null, otherwise the message's status
status_t FindMessageFont(const BMessage* message, const char* name, int32 index, FFont* font);
status_t FindMessageFont(const BMessage* message, const char* name, int32 index, BFont* font); ///< likewise
