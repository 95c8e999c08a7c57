// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Makes PNG files of every colour type and depth, interlaced or not, which no library on a build machine can.
namespace png {

enum ColorType { kGrey = 0, kRgb = 2, kPalette = 3, kGreyAlpha = 4, kRgba = 6 };

struct Kind {
    ColorType type = kRgb;
    int depth = 8; ///< bits of a sample
    bool isInterlaced = false;
    std::vector<std::array<uint8_t, 4>> palette = {}; ///< red, green, blue, opacity
};

/// The samples of a pixel: as many as the colour type has, each below 2 to the power of the depth.
using Samples = std::array<unsigned, 4>;
using Pixel = std::function<Samples(int x, int y)>;

inline int CountSamples(ColorType type)
{
    return type == kRgba ? 4 : type == kRgb ? 3 : type == kGreyAlpha ? 2 : 1;
}

inline std::string Number(uint32_t value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

inline std::string Chunk(const std::string& name, const std::string& data)
{
    static const std::array<uint32_t, 256> sTable = [] {
        std::array<uint32_t, 256> table{};
        for (uint32_t i = 0; i < 256; i++) {
            table[i] = i;
            for (int bit = 0; bit < 8; bit++)
                table[i] = (table[i] >> 1) ^ (table[i] % 2 != 0 ? 0xEDB88320 : 0);
        }
        return table;
    }();
    uint32_t sum = 0xFFFFFFFF;
    const std::string named = name + data;
    for (const char byte : named)
        sum = sTable[(sum ^ static_cast<uint8_t>(byte)) & 0xFF] ^ (sum >> 8);
    return Number(static_cast<uint32_t>(data.size())) + named + Number(~sum);
}

/// A stream of bytes in the zlib format, compressed only where one byte repeats very often.
class Packed {
public:
    Packed()
    {
        fBytes = "\x78\x01";
        Bits(1, 1); // the last block
        Bits(1, 2); // with the fixed codes
    }
    /// Adds the byte this many times.
    void Add(uint8_t byte, uint64_t count = 1)
    {
        constexpr uint32_t kMost = 65521;
        const uint64_t first = fFirst;
        fFirst = static_cast<uint32_t>((first + count % kMost * byte) % kMost);
        // The sum of first + i * byte, for i from 1 to count.
        const uint64_t rounds = count % (uint64_t{2} * kMost);
        fSecond =
            static_cast<uint32_t>((fSecond + count % kMost * first + rounds * (rounds + 1) / 2 % kMost * byte) % kMost);
        Literal(byte);
        for (count--; count >= 258; count -= 258) {
            Code(0b11000101, 8); // 258 bytes again ...
            Code(0, 5);          // ... of one before
        }
        for (; count > 0; count--)
            Literal(byte);
    }
    std::string End()
    {
        Code(0, 7);
        while (fCountBits != 0)
            Bits(0, 1);
        return fBytes + Number(fSecond << 16 | fFirst);
    }

private:
    void Literal(uint8_t byte)
    {
        if (byte < 144)
            Code(0b00110000u + byte, 8);
        else
            Code(0b110010000u + byte - 144, 9);
    }
    /// Codes begin with their highest bit, numbers with their lowest.
    void Code(uint32_t code, int count)
    {
        while (count-- > 0)
            Bits(code >> count & 1, 1);
    }
    void Bits(uint32_t bits, int count)
    {
        for (; count > 0; count--, bits >>= 1) {
            fBits |= (bits & 1) << fCountBits;
            if (++fCountBits == 8) {
                fBytes += static_cast<char>(fBits);
                fBits = 0;
                fCountBits = 0;
            }
        }
    }

    std::string fBytes;
    uint32_t fBits = 0;
    int fCountBits = 0;
    uint32_t fFirst = 1;
    uint32_t fSecond = 0;
};

inline std::string File(int width, int height, const Kind& kind, const std::string& packed)
{
    std::string header = Number(static_cast<uint32_t>(width)) + Number(static_cast<uint32_t>(height));
    header += {static_cast<char>(kind.depth), static_cast<char>(kind.type), 0, 0, kind.isInterlaced ? '\1' : '\0'};
    std::string file = "\x89PNG\r\n\x1a\n" + Chunk("IHDR", header);
    if (!kind.palette.empty()) {
        std::string colors;
        std::string opacity;
        for (const auto& color : kind.palette) {
            for (int i = 0; i < 3; i++)
                colors += static_cast<char>(color[static_cast<size_t>(i)]);
            opacity += static_cast<char>(color[3]);
        }
        file += Chunk("PLTE", colors) + Chunk("tRNS", opacity);
    }
    return file + Chunk("IDAT", packed) + Chunk("IEND", "");
}

inline std::string Make(int width, int height, const Kind& kind, const Pixel& pixel)
{
    Packed packed;
    const auto pass = [&](int left, int top, int across, int down) {
        for (int y = top; y < height && left < width; y += down) {
            packed.Add(0); // no filter
            unsigned bits = 0;
            int count = 0;
            for (int x = left; x < width; x += across) {
                const Samples samples = pixel(x, y);
                for (int i = 0; i < CountSamples(kind.type); i++) {
                    bits = bits << kind.depth | samples[static_cast<size_t>(i)];
                    for (count += kind.depth; count >= 8; count -= 8)
                        packed.Add(static_cast<uint8_t>(bits >> (count - 8)));
                }
            }
            if (count > 0)
                packed.Add(static_cast<uint8_t>(bits << (8 - count)));
        }
    };
    if (kind.isInterlaced) {
        constexpr int kPasses[7][4] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                       {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
        for (const auto& [left, top, across, down] : kPasses)
            pass(left, top, across, down);
    } else {
        pass(0, 0, 1, 1);
    }
    return File(width, height, kind, packed.End());
}

/// A picture of any size in a small file: every byte of its pixels is the same.
inline std::string MakeHuge(int width, int height, const Kind& kind, uint8_t byte)
{
    Packed packed;
    const uint64_t bits = static_cast<uint64_t>(width) * static_cast<uint64_t>(CountSamples(kind.type) * kind.depth);
    for (int y = 0; y < height; y++) {
        packed.Add(0);
        packed.Add(byte, (bits + 7) / 8);
    }
    return File(width, height, kind, packed.End());
}

} // namespace png
