// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"

namespace kits {
class UserFonts;
}

/// Names of a font, NUL-terminated and zero-padded.
inline constexpr size_t B_FONT_FAMILY_LENGTH = 63;
inline constexpr size_t B_FONT_STYLE_LENGTH = 63;
using font_family = char[B_FONT_FAMILY_LENGTH + 1];
using font_style = char[B_FONT_STYLE_LENGTH + 1];

/// Extents of a font from the base line, in pixels, each at least 0: ascent upwards, descent downwards, and leading,
/// the extra gap to the next line. Ascent and descent are whole numbers.
struct font_height {
    float ascent = 0;
    float descent = 0;
    float leading = 0;
};

enum : uint32 { B_DISABLE_ANTIALIASING = 0x01 }; ///< font flags

enum : uint16 { ///< font faces, bits
    B_ITALIC_FACE = 0x01,
    B_UNDERSCORE_FACE = 0x02,
    B_NEGATIVE_FACE = 0x04,
    B_OUTLINED_FACE = 0x08,
    B_STRIKEOUT_FACE = 0x10,
    B_BOLD_FACE = 0x20,
    B_REGULAR_FACE = 0x40
};

enum : uint8 { B_CHAR_SPACING = 0, B_STRING_SPACING = 1, B_BITMAP_SPACING = 2, B_FIXED_SPACING = 3 };

enum : uint8 { B_UNICODE_UTF8 = 0, B_ISO_8859_1 = 1 }; ///< font encodings; text is UTF-8 whatever they say

/// The look of text: a plain value. It keeps every value that it is given, even a family that this machine lacks: the
/// nearest available font shows that. Any thread may make, copy and measure fonts.
class BFont {
public:
    /// The user's plain font.
    BFont();
    BFont(const BFont&) = default;
    /// A copy of the font; the plain font if it is null.
    explicit BFont(const BFont* font);
    BFont& operator=(const BFont&) = default;
    virtual ~BFont() = default;

    /// Longer names are truncated. A null style keeps the present one.
    /// @return B_BAD_VALUE for a null family
    status_t SetFamilyAndStyle(const char* family, const char* style);
    /// Logical pixels. Ignores values that are not finite; others are kept as they are and drawn as 1 to 1000.
    void SetSize(float size);
    /// Degrees; 90 is upright, less leans right. Ignores values that are not finite.
    void SetShear(float shear);
    /// Degrees, counter-clockwise around the start of the base line. Ignores values that are not finite.
    void SetRotation(float rotation);
    void SetSpacing(uint8 spacing) { fSpacing = spacing; }
    void SetEncoding(uint8 encoding) { fEncoding = encoding; }
    void SetFace(uint16 face) { fFace = face; }
    void SetFlags(uint32 flags) { fFlags = flags; }

    void GetFamilyAndStyle(font_family* family, font_style* style) const;
    float Size() const { return fSize; }
    float Shear() const { return fShear; }
    float Rotation() const { return fRotation; }
    uint8 Spacing() const { return fSpacing; }
    uint8 Encoding() const { return fEncoding; }
    uint16 Face() const { return fFace; }
    uint32 Flags() const { return fFlags; }

    /// Null is ignored. Before the interface kit is set up, all three are derived from the size alone.
    void GetHeight(font_height* height) const;
    /// Returns the width of the text in pixels, a whole number; 0 for null.
    float StringWidth(const char* text) const;

    bool operator==(const BFont& other) const = default;

private:
    friend class kits::UserFonts;
    struct Blank {};
    constexpr explicit BFont(Blank) {}

    font_family fFamily{};
    font_style fStyle{};
    float fSize = 12;
    float fShear = 90;
    float fRotation = 0;
    uint32 fFlags = 0;
    uint16 fFace = B_REGULAR_FACE;
    uint8 fSpacing = B_BITMAP_SPACING;
    uint8 fEncoding = B_UNICODE_UTF8;
};

/// The user's fonts, read when the interface kit is set up. Never null.
extern const BFont* be_plain_font;
extern const BFont* be_bold_font;

// The fonts of this machine. Main thread, after the interface kit is set up; before that there are none.

/// Families in alphabetical order.
int32 count_font_families();
/// B_BAD_INDEX beyond the last, B_BAD_VALUE for null.
status_t get_font_family(int32 index, font_family* family);
/// 0 for an unknown family.
int32 count_font_styles(const font_family family);
/// Styles of normal width come first, then the narrower and the wider ones; among them the thinner before the bolder,
/// and the upright before the slanted.
/// @param face  if not null, receives the faces of the style
/// @return B_NAME_NOT_FOUND for an unknown family, B_BAD_INDEX beyond its last style, B_BAD_VALUE for null
status_t get_font_style(const font_family family, int32 index, font_style* style, uint16* face = nullptr);

namespace kits {

/// Finds the style of a family that is nearest to upright letters of normal weight and width.
/// @return B_NAME_NOT_FOUND for an unknown family, B_BAD_VALUE for null
status_t GetRegularStyle(const font_family family, font_style* style);

/// Finds the family and the style, among those listed above, in which a font is shown: the font's own if this machine
/// has them, otherwise their substitutes. A font without a style is shown in one that its family has.
/// @return B_NAME_NOT_FOUND, and nothing is set, if this machine has no fonts
status_t GetListedStyle(const BFont& font, font_family* family, font_style* style);

} // namespace kits
