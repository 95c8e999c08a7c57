// SPDX-License-Identifier: MIT
#include "kits/kernel/record/ProcStatLine.h"

#ifdef __SSE2__

#include <emmintrin.h>

#include <array>
#include <bit>
#include <cstring>

namespace kits {

namespace {

constexpr ptrdiff_t kBlock = 64;
/// Numbers are loaded from their end, so this many bytes before a line are read.
constexpr ptrdiff_t kBefore = 16;
constexpr size_t kMostDigits = 16;

/// Returns one bit for each of the next 64 bytes that is no digit, the first one lowest.
uint64 NonDigits(const char* bytes)
{
    const __m128i zero = _mm_set1_epi8('0');
    const __m128i nine = _mm_set1_epi8(9);
    uint64 digits = 0;
    for (int i = 0; i < 4; ++i) {
        const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 16 * i));
        const __m128i value = _mm_sub_epi8(part, zero);
        const auto bits = _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_min_epu8(value, nine), value));
        digits |= static_cast<uint64>(static_cast<uint32>(bits)) << (16 * i);
    }
    return ~digits;
}

/// Visits the bytes that are no digits.
class NonDigitWalk {
public:
    /// @param begin  at least kBlock bytes before `end`
    NonDigitWalk(const char* begin, const char* end)
        : fBlock(begin)
        , fEnd(end)
        , fBits(NonDigits(begin))
    {
    }

    /// Returns null if the text may end first.
    const char* Next()
    {
        while (fBits == 0) {
            fBlock += kBlock;
            if (fEnd - fBlock < kBlock)
                return nullptr;
            fBits = NonDigits(fBlock);
        }
        const char* next = fBlock + std::countr_zero(fBits);
        fBits &= fBits - 1;
        return next;
    }

private:
    const char* fBlock;
    const char* const fEnd;
    uint64 fBits;
};

/// For every count of digits up to 8, a mask that keeps the values of that many at the high end.
constexpr auto kDigitMasks = [] {
    std::array<uint64, 9> masks{};
    for (size_t count = 1; count <= 8; ++count)
        masks[count] = 0x0F0F0F0F0F0F0F0Fu << (64 - 8 * count);
    return masks;
}();

/// Returns the values of the 1 to 8 digits before `end`, one in each byte, the last one highest. Several results may be
/// added before they are converted into one number: the bytes have room for that.
uint64 LoadDigits(const char* end, size_t count)
{
    uint64 bytes;
    memcpy(&bytes, end - 8, sizeof(bytes));
    return bytes & kDigitMasks[count];
}

uint64 NumberOf(uint64 digits)
{
    const uint64 pairs = (digits & 0x00FF00FF00FF00FFu) * 10 + (digits >> 8 & 0x00FF00FF00FF00FFu);
    const uint64 fours = (pairs & 0x0000FFFF0000FFFFu) * 100 + (pairs >> 16 & 0x0000FFFF0000FFFFu);
    return (fours & 0xFFFFFFFFu) * 10000 + (fours >> 32);
}

} // namespace

const char* TakeUsualLine(std::string_view text, const char* line, ProcessorTime* time)
{
    const char* const textEnd = text.data() + text.size();
    if (line - text.data() < kBefore || textEnd - line < 3 + kBlock || memcmp(line, "cpu", 3) != 0)
        return nullptr;
    NonDigitWalk walk(line + 3, textEnd);
    const char* end = walk.Next();
    if (end == nullptr)
        return nullptr;
    const auto indexLength = static_cast<size_t>(end - (line + 3));
    if (indexLength < 1 || indexLength > 8)
        return nullptr;
    const uint64 index = NumberOf(LoadDigits(end, indexLength));

    uint64 low = 0;
    uint64 high = 0;
    const auto takeField = [&](bool isActive) {
        if (*end != ' ')
            return false;
        const char* const begin = end + 1;
        end = walk.Next();
        if (end == nullptr)
            return false;
        const auto length = static_cast<size_t>(end - begin);
        if (length - 1 >= kMostDigits) // none, or too many
            return false;
        if (isActive && length <= 8) {
            low += LoadDigits(end, length);
        } else if (isActive) {
            low += LoadDigits(end, 8);
            high += LoadDigits(end - 8, length - 8);
        }
        return true;
    };
    // Unrolled, so that each field has its own code: user, nice, system, idle, iowait, irq, softirq, steal.
    if (!takeField(true) || !takeField(true) || !takeField(true) || !takeField(false) || !takeField(false) ||
        !takeField(true) || !takeField(true) || !takeField(true))
        return nullptr;
    while (*end == ' ') {
        end = walk.Next();
        if (end == nullptr)
            return nullptr;
    }
    if (*end != '\n')
        return nullptr;
    *time = {static_cast<int32>(index), NumberOf(low) + NumberOf(high) * 100000000};
    return end + 1;
}

} // namespace kits

#else

namespace kits {

const char* TakeUsualLine(std::string_view, const char*, ProcessorTime*)
{
    return nullptr;
}

} // namespace kits

#endif
