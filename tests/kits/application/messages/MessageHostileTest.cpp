// SPDX-License-Identifier: MIT
// Messages that anybody may send, drop or leave in a file.

#include "kits/application/Message.h"
#include "kits/application/messages/Crc32.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

namespace {

// The parts of CBOR, each as short as possible, or with the given number of length bytes.

std::string Head(int major, uint64 value, int bytes = -1)
{
    if (bytes < 0)
        bytes = value < 24 ? 0 : value <= 0xFF ? 1 : value <= 0xFFFF ? 2 : value <= 0xFFFFFFFF ? 4 : 8;
    const int kind = bytes == 0 ? static_cast<int>(value) : bytes == 1 ? 24 : bytes == 2 ? 25 : bytes == 4 ? 26 : 27;
    std::string head(1, static_cast<char>(major << 5 | kind));
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        head += static_cast<char>(value >> shift & 0xFF);
    return head;
}

std::string Number(uint64 value)
{
    return Head(0, value);
}
std::string Negative(uint64 value)
{
    return Head(1, value);
}
std::string Bytes(const std::string& bytes)
{
    return Head(2, bytes.size()) + bytes;
}
std::string Text(const std::string& text)
{
    return Head(3, text.size()) + text;
}
std::string Array(uint64 count)
{
    return Head(4, count);
}
std::string Map(uint64 count)
{
    return Head(5, count);
}

std::string Body(const std::string& fields)
{
    return Map(2) + Text("what") + Number(5) + Text("fields") + fields;
}

/// Returns a message with one field "f".
std::string Field(const std::string& type, const std::string& values, uint64 count = 1)
{
    return Body(Map(1) + Text("f") + Array(count + 1) + Text(type) + values);
}

/// Puts the head and a correct checksum around a map.
std::string Message(const std::string& map)
{
    const std::string checksum = Head(0, kits::Crc32(map), 4);
    return "\xD9\xD9\xF7\x83" + Head(0, map.size() + checksum.size(), 4) + map + checksum;
}

/// Reads the bytes; a refusal must leave the message unchanged.
status_t Read(const std::string& flat, BMessage* result = nullptr)
{
    BMessage message('keep');
    message.AddInt32("kept", 42);
    const BMessage before(message);
    // An exact copy, so that a sanitizer sees a byte too far.
    std::vector<char> bytes(flat.begin(), flat.end());
    const status_t status = message.Unflatten(bytes.empty() ? "" : bytes.data(), static_cast<ssize_t>(bytes.size()));
    if (status != B_OK)
        EXPECT_TRUE(message.HasSameData(before));
    test::MemoryStream stream;
    stream.bytes = flat;
    BMessage streamed(before);
    EXPECT_EQ(streamed.Unflatten(&stream), status);
    EXPECT_TRUE(streamed.HasSameData(message));
    if (result != nullptr)
        *result = message;
    return status;
}

BMessage Sample()
{
    BMessage message('smpl');
    message.AddString("Version", "0.3.0");
    message.AddInt64("Delay", 200000);
    message.AddRect("frame", BRect(50, 50, 400, 200));
    message.AddData("Uptimes", B_RAW_TYPE, "0123456789", 10);
    message.AddBool("open", true);
    message.AddData("any", B_RAW_TYPE, "x", 1, false);
    message.AddData("any", B_RAW_TYPE, "yz", 2);
    BMessage inner(1);
    inner.AddFloat("Pos", 1.5f);
    message.AddMessage("inner", &inner);
    return message;
}

std::string FlatSample()
{
    std::string flat;
    kits::WriteMessage(Sample(), &flat);
    return flat;
}

/// Returns the map of a flattened message, without head and checksum.
std::string MapOf(const std::string& flat)
{
    return flat.substr(kits::kMessageHeadSize, flat.size() - kits::kMessageHeadSize - 5);
}

} // namespace

TEST(HostileMessage, IsRefusedCutAtEveryByte)
{
    const std::string flat = FlatSample();
    ASSERT_EQ(Read(flat), B_OK);
    for (size_t size = 0; size < flat.size(); ++size)
        EXPECT_EQ(Read(flat.substr(0, size)), B_BAD_VALUE) << size;
    const std::string map = MapOf(flat);
    for (size_t size = 0; size < map.size(); ++size)
        EXPECT_EQ(Read(Message(map.substr(0, size))), B_BAD_VALUE) << size;
}

TEST(HostileMessage, IsRefusedWithAnyByteDamaged)
{
    const std::string flat = FlatSample();
    for (size_t i = 0; i < flat.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string damaged = flat;
            damaged[i] = static_cast<char>(damaged[i] ^ 1 << bit);
            EXPECT_EQ(Read(damaged), B_BAD_VALUE) << i << " " << bit;
        }
    }
}

TEST(HostileMessage, WithARightChecksumIsReadOrRefusedWhole)
{
    const std::string map = MapOf(FlatSample());
    for (size_t i = 0; i < map.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string damaged = map;
            damaged[i] = static_cast<char>(damaged[i] ^ 1 << bit);
            BMessage read;
            if (Read(Message(damaged), &read) == B_OK)
                EXPECT_GT(read.FlattenedSize(), 0);
        }
    }
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        std::string damaged = map;
        for (int change = 0; change < 4; ++change)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        if (random() % 4 == 0)
            damaged.erase(random() % damaged.size(), random() % 8);
        if (random() % 4 == 0)
            damaged.insert(random() % damaged.size(), damaged.substr(random() % damaged.size(), random() % 16));
        BMessage read;
        if (Read(Message(damaged), &read) == B_OK)
            EXPECT_GT(read.FlattenedSize(), 0);
    }
}

TEST(HostileMessage, MayDoWithoutAChecksumButNotWithAWrongOne)
{
    const std::string map = Field("LONG", Number(7));
    BMessage read;
    EXPECT_EQ(Read("\xD9\xD9\xF7\x82" + Head(0, map.size(), 4) + map, &read), B_OK);
    EXPECT_TRUE(read.HasData("f", B_INT32_TYPE));
    EXPECT_EQ(Read("\xD9\xD9\xF7\x83" + Head(0, map.size() + 5, 4) + map + Head(0, kits::Crc32(map) + 1, 4)),
              B_BAD_VALUE);
    EXPECT_EQ(Read("\xD9\xD9\xF7\x83" + Head(0, map.size(), 4) + map), B_BAD_VALUE);
    EXPECT_EQ(Read("\xD9\xD9\xF7\x83" + Head(0, 0, 4)), B_BAD_VALUE);
    EXPECT_EQ(Read("\xD9\xD9\xF7\x82" + Head(0, 0, 4)), B_BAD_VALUE);
}

TEST(HostileMessage, HasASizeThatIsNotBelieved)
{
    const std::string map = Field("LONG", Number(7));
    for (const uint64 size :
         {uint64(0), map.size() - 1, map.size() + 1, uint64(BMessage::kMaxFlattenedSize), uint64(UINT32_MAX)}) {
        const AllocationCounter counter;
        EXPECT_EQ(Read("\xD9\xD9\xF7\x82" + Head(0, size, 4) + map), B_BAD_VALUE) << size;
        EXPECT_LT(counter.Peak(), 1024u * 1024) << size;
    }
    EXPECT_EQ(Read("\xD9\xD9\xF7\x82" + Head(0, map.size(), 8) + map), B_BAD_VALUE);
    EXPECT_EQ(Read("\xD9\xD9\xF7\x82" + Head(4, map.size(), 4) + map), B_BAD_VALUE);
    EXPECT_EQ(Read("\xD9\xD9\xF7\x84" + Head(0, map.size(), 4) + map), B_BAD_VALUE);
    EXPECT_EQ(Read(map), B_BAD_VALUE);
}

TEST(HostileMessage, HasValuesOfAnotherKind)
{
    ASSERT_EQ(Read(Message(Field("LONG", Number(7)))), B_OK);
    const std::string oneFloat = "\xFA\x3F\x80" + std::string(2, '\0');
    const std::string kinds[] = {Number(1),
                                 Negative(1),
                                 Bytes("abcd"),
                                 Text("abcd"),
                                 Array(0),
                                 Map(0),
                                 "\xF5",
                                 "\xF6",
                                 "\xF7",
                                 oneFloat,
                                 "\xFB" + std::string(8, '\0'),
                                 "\xF9" + std::string(2, '\0'),
                                 Head(6, 1) + Number(1),
                                 "\xE0",
                                 "\xFF",
                                 "\x5F\x41x\xFF",
                                 "\x7F\x61x\xFF",
                                 "\x9F\xFF",
                                 "\xBF\xFF",
                                 "\x1C"};
    const struct {
        const char* type;
        std::vector<int> allowed;
    } types[] = {{"BOOL", {6}},    {"LONG", {0, 1}}, {"ULNG", {0}}, {"FLOT", {9}}, {"DBLE", {10}},
                 {"CSTR", {2, 3}}, {"RAWT", {2}},    {"RECT", {}},  {"MSGG", {}},  {"RGBC", {}},
                 {"MSNG", {}},     {"ANYT", {}},     {"data", {2}}};
    for (const auto& type : types) {
        for (int kind = 0; kind < static_cast<int>(std::size(kinds)); ++kind) {
            const bool isAllowed = std::count(type.allowed.begin(), type.allowed.end(), kind) > 0;
            EXPECT_EQ(Read(Message(Field(type.type, kinds[kind]))), isAllowed ? B_OK : B_BAD_VALUE)
                << type.type << " " << kind;
        }
    }
}

TEST(HostileMessage, HasNumbersOutOfTheirRange)
{
    const struct {
        const char* type;
        uint64 largest;
        uint64 smallest; ///< in CBOR's encoding: 0 means -1
        bool isSigned;
    } types[] = {{"BYTE", 127, 127, true},
                 {"SHRT", 32767, 32767, true},
                 {"LONG", INT32_MAX, INT32_MAX, true},
                 {"LLNG", INT64_MAX, INT64_MAX, true},
                 {"UBYT", 255, 0, false},
                 {"USHT", 65535, 0, false},
                 {"ULNG", UINT32_MAX, 0, false}};
    for (const auto& type : types) {
        EXPECT_EQ(Read(Message(Field(type.type, Number(type.largest)))), B_OK) << type.type;
        EXPECT_EQ(Read(Message(Field(type.type, Number(type.largest + 1)))), B_BAD_VALUE) << type.type;
        EXPECT_EQ(Read(Message(Field(type.type, Negative(type.smallest)))), type.isSigned ? B_OK : B_BAD_VALUE)
            << type.type;
        EXPECT_EQ(Read(Message(Field(type.type, Negative(type.smallest + 1)))), B_BAD_VALUE) << type.type;
        EXPECT_EQ(Read(Message(Field(type.type, Negative(UINT64_MAX)))), B_BAD_VALUE) << type.type;
    }
    EXPECT_EQ(Read(Message(Field("ULLG", Number(UINT64_MAX)))), B_OK);
    EXPECT_EQ(Read(Message(Field("ULLG", Negative(0)))), B_BAD_VALUE);
    BMessage read;
    int64 smallest = 0;
    EXPECT_EQ(Read(Message(Field("LLNG", Negative(INT64_MAX))), &read), B_OK);
    EXPECT_EQ(read.FindInt64("f", &smallest), B_OK);
    EXPECT_EQ(smallest, INT64_MIN);
}

TEST(HostileMessage, HasArraysOfAnotherLength)
{
    const std::string one = "\xFA\x3F\x80" + std::string(2, '\0');
    EXPECT_EQ(Read(Message(Field("BPNT", Array(2) + one + one))), B_OK);
    EXPECT_EQ(Read(Message(Field("BPNT", Array(1) + one))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("BPNT", Array(3) + one + one + one))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("RECT", Array(4) + one + one + one + one))), B_OK);
    EXPECT_EQ(Read(Message(Field("RECT", Array(5) + one + one + one + one + one))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("RECT", Head(4, UINT64_MAX) + one))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("RGBC", Array(4) + Number(0) + Number(1) + Number(2) + Number(255)))), B_OK);
    EXPECT_EQ(Read(Message(Field("RGBC", Array(4) + Number(0) + Number(1) + Number(2) + Number(256)))), B_BAD_VALUE);
}

TEST(HostileMessage, HasCountsThatAreNotBelieved)
{
    for (const uint64 count :
         {uint64(100), uint64(65536), uint64(1) << 31, uint64(1) << 32, uint64(1) << 62, uint64(1) << 63, UINT64_MAX}) {
        const AllocationCounter counter;
        EXPECT_EQ(Read(Message(Body(Map(count)))), B_BAD_VALUE) << count;
        EXPECT_EQ(Read(Message(Body(Map(1) + Text("f") + Head(4, count) + Text("LONG")))), B_BAD_VALUE) << count;
        EXPECT_EQ(Read(Message(Field("CSTR", Head(3, count)))), B_BAD_VALUE) << count;
        EXPECT_EQ(Read(Message(Field("RAWT", Head(2, count) + "x"))), B_BAD_VALUE) << count;
        EXPECT_EQ(Read(Message(Body(Map(1) + Head(3, count) + "x"))), B_BAD_VALUE) << count;
        EXPECT_EQ(Read(Message(Map(count))), B_BAD_VALUE) << count;
        EXPECT_LT(counter.Peak(), 1024u * 1024) << count;
    }
}

TEST(HostileMessage, IsRefusedBeyondTheLimits)
{
    std::string nested = Body(Map(0));
    for (int32 depth = 1; depth < BMessage::kMaxDepth; ++depth)
        nested = Field("MSGG", nested);
    EXPECT_EQ(Read(Message(nested)), B_OK);
    nested = Field("MSGG", nested);
    EXPECT_EQ(Read(Message(nested)), B_BAD_VALUE);
    for (int depth = 0; depth < 1000; ++depth)
        nested = Field("MSGG", nested);
    EXPECT_EQ(Read(Message(nested)), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(std::string(1000000, '\x81'))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(std::string(1000000, '\xC1'))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("LONG", std::string(1000000, '\x81')))), B_BAD_VALUE);

    const auto values = [](int32 count) {
        return Message(Field("BOOL", std::string(static_cast<size_t>(count), '\xF5'), static_cast<uint64>(count)));
    };
    EXPECT_EQ(Read(values(BMessage::kMaxValues)), B_OK);
    EXPECT_EQ(Read(values(BMessage::kMaxValues + 1)), B_BAD_VALUE);
    // Pointers are dropped, but they count.
    const auto pointers = [](int32 count) {
        return Message(Field("PNTR", std::string(static_cast<size_t>(count), '\1'), static_cast<uint64>(count)));
    };
    EXPECT_EQ(Read(pointers(BMessage::kMaxValues + 1)), B_BAD_VALUE);
    const auto fields = [](int32 count) {
        std::string map = Map(static_cast<uint64>(count));
        for (int32 i = 0; i < count; ++i)
            map += Text(std::to_string(i)) + Array(2) + Text("BOOL") + "\xF5";
        return Message(Body(map));
    };
    EXPECT_EQ(Read(fields(BMessage::kMaxFields)), B_OK);
    EXPECT_EQ(Read(fields(BMessage::kMaxFields + 1)), B_BAD_VALUE);
}

TEST(HostileMessage, HasNamesThatNoFieldMayHave)
{
    const auto named = [](const std::string& name) {
        return Message(Body(Map(1) + Text(name) + Array(2) + Text("LONG") + Number(1)));
    };
    EXPECT_EQ(Read(named("name")), B_OK);
    EXPECT_EQ(Read(named("")), B_BAD_VALUE);
    EXPECT_EQ(Read(named(std::string("a\0b", 3))), B_BAD_VALUE);
    EXPECT_EQ(Read(named(std::string(255, 'n'))), B_OK);
    EXPECT_EQ(Read(named(std::string(256, 'n'))), B_BAD_VALUE);
    const std::string field = Array(2) + Text("LONG") + Number(1);
    EXPECT_EQ(Read(Message(Body(Map(2) + Text("a") + field + Text("b") + field))), B_OK);
    EXPECT_EQ(Read(Message(Body(Map(2) + Text("a") + field + Text("a") + field))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Body(Map(3) + Text("a") + field + Text("b") + field + Bytes("a") + field))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Body(Map(1) + Number(1) + field))), B_BAD_VALUE);
}

TEST(HostileMessage, HasAnotherShape)
{
    const std::string good = Body(Map(0));
    EXPECT_EQ(Read(Message(good)), B_OK);
    EXPECT_EQ(Read(Message("")), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(good + Number(1))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(good + good)), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Number(1))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Array(2) + Number(1) + Map(0))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(1) + Text("what") + Number(5))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(2) + Text("fields") + Map(0) + Text("what") + Number(5))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(3) + Text("what") + Number(5) + Text("fields") + Map(0) + Text("x") + Number(1))),
              B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(2) + Text("what") + Negative(5) + Text("fields") + Map(0))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(2) + Text("what") + Number(uint64(1) << 32) + Text("fields") + Map(0))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(2) + Text("what") + Text("abc") + Text("fields") + Map(0))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(2) + Text("what") + Text("ab\nc") + Text("fields") + Map(0))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Map(2) + Text("what") + Bytes("abcd") + Text("fields") + Map(0))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Body(Map(1) + Text("f") + Array(1) + Text("LONG")))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Body(Map(1) + Text("f") + Array(0)))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Body(Map(1) + Text("f") + Array(2) + Text("RAWT") + Text("variable")))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("RAWT", Text("Variable") + Bytes("a"), 2))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("RAWT", Bytes("a") + Bytes("bc"), 2))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("RAWT", Text("variable") + Bytes("a") + Bytes("bc"), 3))), B_OK);
    EXPECT_EQ(Read(Message(Field("LONG", Text("variable") + Number(1), 2))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("CSTR", Text(std::string("a\0b", 3))))), B_BAD_VALUE);
}

TEST(HostileMessage, NeverBringsAPointer)
{
    BMessage read;
    EXPECT_EQ(Read(Message(Field("PNTR", Number(0xDEADBEEF))), &read), B_OK);
    EXPECT_TRUE(read.IsEmpty());
    EXPECT_EQ(Read(Message(Field("OPTR", Number(0xDEADBEEF))), &read), B_OK);
    EXPECT_TRUE(read.IsEmpty());
    EXPECT_EQ(Read(Message(Field("MSGG", Field("PNTR", Number(UINT64_MAX)))), &read), B_OK);
    BMessage inner('keep');
    EXPECT_EQ(read.FindMessage("f", &inner), B_OK);
    EXPECT_TRUE(inner.IsEmpty());
    EXPECT_EQ(Read(Message(Field("PNTR", Bytes("01234567")))), B_BAD_VALUE);
    EXPECT_EQ(Read(Message(Field("PNTR", std::string(20, '\x81') + Number(1)))), B_BAD_VALUE);
}

TEST(HostileMessage, TakesAFewTimesItsSizeAtMost)
{
    const auto peakOf = [](const std::string& flat) {
        BMessage message;
        const AllocationCounter counter;
        message.Unflatten(flat.data(), static_cast<ssize_t>(flat.size()));
        return counter.Peak();
    };
    constexpr size_t kBeyond = 12 * 1024 * 1024;

    // As many as one byte each can produce: numbers, empty strings, empty messages, short fields.
    const uint64 most = BMessage::kMaxValues;
    const std::string numbers = Message(Field("LLNG", std::string(most, '\1'), most));
    EXPECT_LT(peakOf(numbers), 4 * numbers.size() + kBeyond);
    const std::string strings = Message(Field("CSTR", std::string(most, '\x60'), most));
    EXPECT_LT(peakOf(strings), 4 * strings.size() + kBeyond);
    std::string messages;
    for (uint64 i = 0; i < most; ++i)
        messages += Body(Map(0));
    messages = Message(Field("MSGG", messages, most));
    EXPECT_LT(peakOf(messages), 4 * messages.size() + kBeyond);
    std::string fields = Map(BMessage::kMaxFields);
    for (int32 i = 0; i < BMessage::kMaxFields; ++i)
        fields += Text(std::to_string(i)) + Array(2) + Number(1) + Bytes("");
    fields = Message(Body(fields));
    EXPECT_LT(peakOf(fields), 4 * fields.size() + kBeyond);

    // And as few as possible for the largest allowed size.
    const std::string big = Message(Field("RAWT", Bytes(std::string(BMessage::kMaxFlattenedSize - 100, 'x'))));
    EXPECT_LT(peakOf(big), 3 * big.size());
    const std::string halves = std::string(BMessage::kMaxFlattenedSize / 2 - 100, 'x');
    const std::string two = Message(Field("CSTR", Text(halves) + Text(halves), 2));
    EXPECT_LT(peakOf(two), 4 * two.size());
}
