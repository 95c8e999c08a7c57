// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/support/DataIO.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/FieldAt.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/ReplaceValue.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

std::string Flat(const BMessage& message)
{
    std::string flat;
    EXPECT_EQ(kits::WriteMessage(message, &flat), B_OK);
    return flat;
}

std::string Hex(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        char digits[3];
        snprintf(digits, sizeof(digits), "%02x", static_cast<unsigned>(static_cast<uint8>(c)));
        text += digits;
    }
    return text;
}

/// Returns a message with one field of every type that can be written, with the ends of its range.
BMessage FullMessage()
{
    BMessage message('full');
    message.AddBool("bool", true);
    message.AddBool("bool", false);
    for (const int8 value : {-128, 0, 127})
        message.AddInt8("int8", value);
    for (const int16 value : {-32768, 0, 32767})
        message.AddInt16("int16", value);
    for (const int32 value : {INT32_MIN, -1, 0, 1, INT32_MAX})
        message.AddInt32("int32", value);
    for (const int64 value : {INT64_MIN, int64(-1), int64(0), int64(24), INT64_MAX})
        message.AddInt64("int64", value);
    const uint8 byte = 255;
    message.AddData("uint8", B_UINT8_TYPE, &byte, 1);
    const uint16 word = 65535;
    message.AddData("uint16", B_UINT16_TYPE, &word, 2);
    const uint32 longWord = UINT32_MAX;
    message.AddData("uint32", B_UINT32_TYPE, &longWord, 4);
    const uint64 longest = UINT64_MAX;
    message.AddData("uint64", B_UINT64_TYPE, &longest, 8);
    message.AddFloat("float", 1.1f);
    message.AddDouble("double", 1.1);
    message.AddPoint("point", BPoint(1.5f, -2));
    message.AddRect("rect", BRect(0, 0, -1, -1));
    message.AddString("string", "Töne & \"quotes\"\n");
    message.AddString("string", "");
    message.AddString("string", "not UTF-8: \xff\xfe");
    message.AddMessenger("messenger", kits::MessageAccess::MessengerTo({0xFFFFFFFFFFFFFFFF, 0x7FFFFFFFFFFFFFFF}));
    message.AddData("raw", B_RAW_TYPE, "\0\1\2", 3);
    message.AddData("raw", B_RAW_TYPE, "abc", 3);
    message.AddData("any", 'data', "a", 1, false);
    message.AddData("any", 'data', "", 0);
    message.AddData("any", 'data', "longer", 6);
    message.AddData("text/plain", B_MIME_TYPE, "dropped", 7);
    message.AddData("color", B_RGB_COLOR_TYPE, "\1\2\3\xff", 4);
    message.AddData("unprintable", 1, "x", 1);
    message.AddBool("name that is not UTF-8: \xff", true);
    BMessage inner(7);
    inner.AddInt32("number", 1);
    inner.AddInt32("other", 2);
    inner.AddInt32("a", 3);
    BMessage innermost;
    inner.AddMessage("innermost", &innermost);
    message.AddMessage("message", &inner);
    message.AddMessage("message", &innermost);
    return message;
}

/// Returns a message in a message, and so on.
BMessage Nested(int32 depth)
{
    BMessage message(static_cast<uint32>(depth));
    if (depth > 1) {
        const BMessage inner = Nested(depth - 1);
        message.AddMessage("m", &inner);
    }
    return message;
}

/// A stream that gives a few bytes at a time, and counts.
class SlowStream : public BDataIO {
public:
    explicit SlowStream(std::string content)
        : bytes(std::move(content))
    {
    }
    ssize_t Read(void* buffer, size_t size) override
    {
        const size_t count = std::min({size, bytes.size() - taken, size_t(7)});
        memcpy(buffer, bytes.data() + taken, count);
        taken += count;
        return static_cast<ssize_t>(count);
    }
    ssize_t Write(const void*, size_t) override { return B_IO_ERROR; }

    const std::string bytes;
    size_t taken = 0;
};

class FailingStream : public BDataIO {
public:
    ssize_t Read(void*, size_t) override { return B_IO_ERROR; }
    ssize_t Write(const void*, size_t size) override
    {
        ++writes;
        return room < size ? static_cast<ssize_t>(room) : static_cast<ssize_t>(size);
    }

    size_t room = 0;
    int writes = 0;
};

} // namespace

TEST(MessageFlattening, GivesEveryTypeBack)
{
    const BMessage message = FullMessage();
    const std::string flat = Flat(message);
    BMessage read('else');
    read.AddInt32("old", 1);
    ASSERT_EQ(read.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    EXPECT_TRUE(read.HasSameData(message));
    EXPECT_EQ(Flat(read), flat);

    const char* name;
    EXPECT_TRUE(test::FieldAt(read, B_ANY_TYPE, 0, &name, nullptr));
    EXPECT_STREQ(name, "bool");
    EXPECT_EQ(read.AddData("raw", B_RAW_TYPE, "four", 4), B_BAD_VALUE);
    EXPECT_EQ(read.AddData("any", 'data', "any size", 8), B_OK);
}

TEST(MessageFlattening, IsTheCborThatWasPromised)
{
    BMessage message('pref');
    message.AddString("Version", "0.3.0");
    message.AddInt64("Delay", 200000);
    message.AddFloat("f", 1);
    const std::string flat = Flat(message);
    EXPECT_EQ(Hex(flat), "d9d9f7"
                         "83"
                         "1a0000004a"
                         "a2"
                         "6477686174"
                         "6470726566"
                         "666669656c6473"
                         "a3"
                         "6756657273696f6e"
                         "82"
                         "6443535452"
                         "65302e332e30"
                         "6544656c6179"
                         "82"
                         "644c4c4e47"
                         "1a00030d40"
                         "6166"
                         "82"
                         "64464c4f54"
                         "fa3f800000"
                         "1a" +
                             Hex(flat).substr(2 * flat.size() - 8));

    BMessage number(1);
    number.AddData("r", 'RAWT', "\xAA", 1, false);
    EXPECT_EQ(Hex(Flat(number)).substr(18, 2 * 34), "a2"
                                                    "6477686174"
                                                    "01"
                                                    "666669656c6473"
                                                    "a1"
                                                    "6172"
                                                    "83"
                                                    "6452415754"
                                                    "687661726961626c65"
                                                    "41aa");
}

TEST(MessageFlattening, KeepsTheBitsOfFloats)
{
    std::vector<uint32> floats = {0x00000000, 0x80000000, 0x7F800000, 0xFF800000, 0x7FC00000,
                                  0xFFC00001, 0x7F800001, 0x7FFFFFFF, 0x00000001, 0x3F9D70A4};
    std::vector<uint64> doubles = {0,
                                   1ull << 63,
                                   0x7FF0000000000000,
                                   0xFFF0000000000000,
                                   0x7FF8000000000000,
                                   0x7FF0000000000001,
                                   0xFFFFFFFFFFFFFFFF,
                                   1,
                                   0x3FF3AE147AE147AE};
    BMessage message;
    for (const uint32 bits : floats)
        message.AddData("float", B_FLOAT_TYPE, &bits, 4);
    for (const uint64 bits : doubles)
        message.AddData("double", B_DOUBLE_TYPE, &bits, 8);
    message.AddData("rect", B_RECT_TYPE, floats.data() + 4, 16);
    const std::string flat = Flat(message);
    BMessage read;
    ASSERT_EQ(read.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    EXPECT_TRUE(read.HasSameData(message));
}

TEST(MessageFlattening, LeavesPointersOut)
{
    BMessage inner;
    inner.AddPointer("view", &inner);
    inner.AddInt32("number", 1);
    BMessage message('ptrs');
    message.AddPointer("pointer", &message);
    const void* object = &message;
    message.AddData("object", B_OBJECT_TYPE, &object, sizeof(object));
    message.AddMessage("inner", &inner);
    const std::string flat = Flat(message);
    BMessage read;
    ASSERT_EQ(read.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    EXPECT_EQ(read.CountNames(B_ANY_TYPE), 1);
    ASSERT_EQ(read.FindMessage("inner", &inner), B_OK);
    EXPECT_EQ(inner.CountNames(B_ANY_TYPE), 1);
    EXPECT_TRUE(inner.HasData("number", B_INT32_TYPE));
}

TEST(MessageFlattening, KnowsItsSize)
{
    const BMessage message = FullMessage();
    const std::string flat = Flat(message);
    const ssize_t size = static_cast<ssize_t>(flat.size());
    EXPECT_EQ(message.FlattenedSize(), size);
    std::vector<char> buffer(flat.size() + 1, '#');
    EXPECT_EQ(message.Flatten(buffer.data(), size - 1), B_NO_MEMORY);
    EXPECT_EQ(buffer[0], '#');
    EXPECT_EQ(message.Flatten(buffer.data(), size), B_OK);
    EXPECT_EQ(std::string(buffer.data(), flat.size()), flat);
    EXPECT_EQ(buffer[flat.size()], '#');
    EXPECT_EQ(message.Flatten(static_cast<char*>(nullptr), 5), B_BAD_VALUE);
}

TEST(MessageFlattening, WritesAndReadsStreamsMessageByMessage)
{
    BMessage first('1st '), second('2nd ');
    first.AddString("text", "first");
    test::MemoryStream stream;
    ssize_t size = 0;
    EXPECT_EQ(first.Flatten(&stream, &size), B_OK);
    EXPECT_EQ(size, first.FlattenedSize());
    EXPECT_EQ(second.Flatten(&stream), B_OK);
    BMessage read;
    EXPECT_EQ(read.Unflatten(&stream), B_OK);
    EXPECT_TRUE(read.HasSameData(first));
    EXPECT_EQ(stream.position, static_cast<size_t>(size));
    EXPECT_EQ(read.Unflatten(&stream), B_OK);
    EXPECT_TRUE(read.HasSameData(second));
    EXPECT_EQ(read.Unflatten(&stream), B_BAD_VALUE);
    EXPECT_TRUE(read.HasSameData(second));
}

TEST(MessageFlattening, ReadsWhatComesInPieces)
{
    const BMessage message = FullMessage();
    SlowStream stream(Flat(message) + "and more");
    BMessage read;
    EXPECT_EQ(read.Unflatten(&stream), B_OK);
    EXPECT_TRUE(read.HasSameData(message));
    EXPECT_EQ(stream.taken, stream.bytes.size() - 8);
}

TEST(MessageFlattening, ReportsWhatStreamsReport)
{
    const BMessage message = FullMessage();
    FailingStream stream;
    BMessage read('keep');
    EXPECT_EQ(read.Unflatten(&stream), B_IO_ERROR);
    EXPECT_EQ(read.what, uint32('keep'));
    EXPECT_EQ(message.Flatten(&stream), B_DEVICE_FULL);
    stream.room = SIZE_MAX;
    EXPECT_EQ(message.Flatten(&stream), B_OK);
    EXPECT_EQ(stream.writes, 2);
    SlowStream readOnly("");
    EXPECT_EQ(message.Flatten(&readOnly), B_IO_ERROR);
    EXPECT_EQ(message.Flatten(static_cast<BDataIO*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(read.Unflatten(static_cast<BDataIO*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(read.Unflatten(nullptr, 5), B_BAD_VALUE);
    EXPECT_EQ(read.Unflatten("x", -1), B_BAD_VALUE);
}

TEST(MessageFlattening, WritesNothingThatCouldNotBeRead)
{
    EXPECT_GT(Nested(BMessage::kMaxDepth).FlattenedSize(), 0);
    EXPECT_EQ(Nested(BMessage::kMaxDepth + 1).FlattenedSize(), B_BAD_VALUE);

    BMessage values;
    for (int32 i = 0; i < BMessage::kMaxValues; ++i)
        values.AddBool("values", true);
    const std::string flat = Flat(values);
    BMessage read;
    EXPECT_EQ(read.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    EXPECT_TRUE(read.HasSameData(values));
    values.AddBool("values", true);
    EXPECT_EQ(values.FlattenedSize(), B_BAD_VALUE);
    test::MemoryStream stream;
    EXPECT_EQ(values.Flatten(&stream), B_BAD_VALUE);
    EXPECT_EQ(stream.bytes.size(), 0u);

    // The size of everything except the string.
    BMessage big;
    big.AddString("s", std::string(100000, 'x'));
    const size_t frame = static_cast<size_t>(big.FlattenedSize()) - 100000;
    test::ReplaceString(big, "s", std::string(BMessage::kMaxFlattenedSize - frame, 'x'));
    EXPECT_EQ(big.FlattenedSize(), static_cast<ssize_t>(BMessage::kMaxFlattenedSize));
    const std::string bigFlat = Flat(big);
    EXPECT_EQ(read.Unflatten(bigFlat.data(), static_cast<ssize_t>(bigFlat.size())), B_OK);
    EXPECT_TRUE(read.HasSameData(big));
    test::ReplaceString(big, "s", std::string(BMessage::kMaxFlattenedSize - frame + 1, 'x'));
    EXPECT_EQ(big.FlattenedSize(), B_BAD_VALUE);
}

TEST(MessageFlattening, TakesManyFieldsInMessagesOfMessages)
{
    BMessage store;
    for (int i = 0; i < 256; ++i) {
        BMessage chart;
        for (int j = 0; j < 255; ++j)
            chart.AddBool(std::to_string(j).c_str(), true);
        store.AddMessage("chart", &chart);
    }
    store.AddBool("a", true);
    const std::string flat = Flat(store);
    BMessage read;
    EXPECT_EQ(read.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    EXPECT_TRUE(read.HasSameData(store));
    for (int i = 0; i < 256; ++i)
        store.AddBool(("more" + std::to_string(i)).c_str(), true);
    EXPECT_EQ(store.FlattenedSize(), B_BAD_VALUE);
}
