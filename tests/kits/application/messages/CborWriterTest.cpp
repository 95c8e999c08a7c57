// SPDX-License-Identifier: MIT
#include "kits/application/messages/CborWriter.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

using kits::CborWriter;

namespace {

/// Returns the written bytes in hexadecimal.
std::string Written(const std::function<void(CborWriter&)>& write)
{
    std::string bytes, text;
    CborWriter writer(&bytes);
    write(writer);
    for (const char byte : bytes) {
        text += "0123456789abcdef"[static_cast<uint8>(byte) >> 4];
        text += "0123456789abcdef"[static_cast<uint8>(byte) & 15];
    }
    return text;
}

std::string Integer(int64 value)
{
    return Written([value](CborWriter& writer) { writer.AddInteger(value); });
}

std::string Unsigned(uint64 value)
{
    return Written([value](CborWriter& writer) { writer.AddUnsigned(value); });
}

} // namespace

// The values of the standard's appendix, and both sides of each limit.

TEST(CborWriter, GivesIntegersTheirShortestForm)
{
    EXPECT_EQ(Unsigned(0), "00");
    EXPECT_EQ(Unsigned(23), "17");
    EXPECT_EQ(Unsigned(24), "1818");
    EXPECT_EQ(Unsigned(255), "18ff");
    EXPECT_EQ(Unsigned(256), "190100");
    EXPECT_EQ(Unsigned(65535), "19ffff");
    EXPECT_EQ(Unsigned(65536), "1a00010000");
    EXPECT_EQ(Unsigned(4294967295), "1affffffff");
    EXPECT_EQ(Unsigned(4294967296), "1b0000000100000000");
    EXPECT_EQ(Unsigned(std::numeric_limits<uint64>::max()), "1bffffffffffffffff");
    EXPECT_EQ(Integer(1000000), "1a000f4240");
    EXPECT_EQ(Integer(-1), "20");
    EXPECT_EQ(Integer(-24), "37");
    EXPECT_EQ(Integer(-25), "3818");
    EXPECT_EQ(Integer(-1000), "3903e7");
    EXPECT_EQ(Integer(std::numeric_limits<int64>::max()), "1b7fffffffffffffff");
    EXPECT_EQ(Integer(std::numeric_limits<int64>::min()), "3b7fffffffffffffff");
}

TEST(CborWriter, KeepsTheSizeAndTheBitsOfNumbers)
{
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddFloat(100000.0f); }), "fa47c35000");
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddFloat(0); }), "fa00000000");
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddDouble(1.1); }), "fb3ff199999999999a");
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddDouble(-4.1); }), "fbc010666666666666");
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddFloat(std::bit_cast<float>(0x7FC01234u)); }), "fa7fc01234");
}

TEST(CborWriter, WritesStringsAndWhatHoldsOthers)
{
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddText("ü"); }), "62c3bc");
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddText(""); }), "60");
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddBytes({"\0\1\2\3", 4}); }), "4400010203");
    EXPECT_EQ(Written([](CborWriter& writer) { writer.AddBytes(std::string(300, 'x')); }).substr(0, 8), "59012c78");
    EXPECT_EQ(Written([](CborWriter& writer) {
                  writer.StartMap(1);
                  writer.AddText("a");
                  writer.StartArray(2);
                  writer.AddBool(true);
                  writer.AddBool(false);
              }),
              "a1616182f5f4");
}
