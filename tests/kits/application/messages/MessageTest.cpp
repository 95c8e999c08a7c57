// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"

#include "kits/application/Messenger.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/support/Color.h"
#include "kits/support/Flattenable.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/FieldAt.h"
#include "tests/support/ReplaceValue.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

/// Four bytes with a type of their own.
class Stamp : public BFlattenable {
public:
    explicit Stamp(uint32 number = 0)
        : value(number)
    {
    }
    bool IsFixedSize() const override { return true; }
    type_code TypeCode() const override { return 'STMP'; }
    ssize_t FlattenedSize() const override { return 4; }
    status_t Flatten(void* buffer, ssize_t size) const override
    {
        if (size < 4)
            return B_BAD_VALUE;
        memcpy(buffer, &value, 4);
        return B_OK;
    }
    status_t Unflatten(type_code, const void* buffer, ssize_t size) override
    {
        if (size != 4)
            return B_MISMATCHED_VALUES;
        memcpy(&value, buffer, 4);
        return B_OK;
    }

    uint32 value;
};

/// Gives the functions of each type the same names.
#define MESSAGE_VALUE(Name, Type, kFirst, kSecond)                                                                     \
    struct Name##Values {                                                                                              \
        using Value = Type;                                                                                            \
        static status_t Add(BMessage& m, const char* n, Value v) { return m.Add##Name(n, v); }                         \
        static status_t Find(BMessage& m, const char* n, Value* v, int32 i = 0) { return m.Find##Name(n, v, i); }      \
        static bool Has(BMessage& m, const char* n, int32 i = 0)                                                       \
        {                                                                                                              \
            Value value{};                                                                                             \
            return m.Find##Name(n, &value, i) == B_OK;                                                                 \
        }                                                                                                              \
        static Value First() { return kFirst; }                                                                        \
        static Value Second() { return kSecond; }                                                                      \
    }

int sSomething, sSomethingElse;
MESSAGE_VALUE(Bool, bool, true, false);
MESSAGE_VALUE(Int8, int8, -128, 127);
MESSAGE_VALUE(Int16, int16, -32768, 32767);
MESSAGE_VALUE(Int32, int32, INT32_MIN, INT32_MAX);
MESSAGE_VALUE(Int64, int64, INT64_MIN, INT64_MAX);
MESSAGE_VALUE(Float, float, 1.5f, -0.25f);
MESSAGE_VALUE(Double, double, 1e300, -1e-300);
MESSAGE_VALUE(Point, BPoint, BPoint(1, 2), BPoint(-3, 4.5f));
MESSAGE_VALUE(Rect, BRect, BRect(1, 2, 3, 4), BRect(0, 0, -1, -1));
MESSAGE_VALUE(Pointer, void*, &sSomething, &sSomethingElse);
MESSAGE_VALUE(String, std::string, "one", "another one, longer than the first");
MESSAGE_VALUE(Messenger, BMessenger, kits::MessageAccess::MessengerTo({1, 2}), BMessenger());
#undef MESSAGE_VALUE

} // namespace

template <class T> class MessageValues : public testing::Test {
};

using AllValues = testing::Types<BoolValues, Int8Values, Int16Values, Int32Values, Int64Values, FloatValues,
                                 DoubleValues, PointValues, RectValues, PointerValues, StringValues, MessengerValues>;
TYPED_TEST_SUITE(MessageValues, AllValues);

TYPED_TEST(MessageValues, AreFoundAsTheyWereAdded)
{
    using V = TypeParam;
    BMessage message;
    EXPECT_FALSE(V::Has(message, "field"));
    ASSERT_EQ(V::Add(message, "field", V::First()), B_OK);
    ASSERT_EQ(V::Add(message, "field", V::Second()), B_OK);
    typename V::Value value{};
    EXPECT_EQ(V::Find(message, "field", &value), B_OK);
    EXPECT_EQ(value, V::First());
    EXPECT_EQ(V::Find(message, "field", &value, 1), B_OK);
    EXPECT_EQ(value, V::Second());
    EXPECT_TRUE(V::Has(message, "field"));
    EXPECT_TRUE(V::Has(message, "field", 1));
    EXPECT_FALSE(V::Has(message, "field", 2));
    EXPECT_FALSE(V::Has(message, "field", -1));
}

TYPED_TEST(MessageValues, FailWithoutTouchingTheResult)
{
    using V = TypeParam;
    BMessage message;
    ASSERT_EQ(V::Add(message, "field", V::First()), B_OK);
    typename V::Value value = V::Second();
    EXPECT_EQ(V::Find(message, "other", &value), B_NAME_NOT_FOUND);
    EXPECT_EQ(V::Find(message, "field", &value, 1), B_BAD_INDEX);
    EXPECT_EQ(V::Find(message, "field", &value, -1), B_BAD_INDEX);
    EXPECT_EQ(V::Find(message, nullptr, &value), B_BAD_VALUE);
    EXPECT_EQ(V::Find(message, "field", static_cast<typename V::Value*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(V::Add(message, nullptr, V::First()), B_BAD_VALUE);
    EXPECT_EQ(V::Add(message, "", V::First()), B_BAD_VALUE);
    EXPECT_EQ(value, V::Second());
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 1);
}

TYPED_TEST(MessageValues, KeepTheTypeOfTheirField)
{
    using V = TypeParam;
    BMessage message;
    ASSERT_EQ(message.AddData("taken", 'ELSE', "x", 1), B_OK);
    EXPECT_EQ(V::Add(message, "taken", V::First()), B_BAD_TYPE);
    EXPECT_FALSE(V::Has(message, "taken"));
    typename V::Value value = V::Second();
    EXPECT_EQ(V::Find(message, "taken", &value), B_BAD_TYPE);
    EXPECT_EQ(value, V::Second());
    int32 count = 0;
    EXPECT_EQ(message.GetInfo("taken", nullptr, &count), B_OK);
    EXPECT_EQ(count, 1);
}

TEST(Message, IsEmptyAtFirst)
{
    const BMessage message('test');
    EXPECT_EQ(message.what, uint32('test'));
    EXPECT_TRUE(message.IsEmpty());
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 0);
    EXPECT_FALSE(message.WasDropped());
    EXPECT_FALSE(message.WasDelivered());
    EXPECT_FALSE(message.IsSourceWaiting());
    EXPECT_FALSE(message.ReturnAddress().IsValid());
    EXPECT_EQ(BMessage().what, 0u);
}

TEST(Message, TellsItsFieldsInTheirOrder)
{
    BMessage message;
    message.AddInt32("b", 1);
    message.AddString("a", "x");
    message.AddInt32("c", 1);
    message.AddInt32("c", 2);
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 3);
    EXPECT_EQ(message.CountNames(B_INT32_TYPE), 2);
    EXPECT_EQ(message.CountNames(B_RECT_TYPE), 0);

    type_code type = 0;
    int32 count = 0;
    EXPECT_EQ(message.GetInfo("c", &type, &count), B_OK);
    EXPECT_EQ(type, type_code(B_INT32_TYPE));
    EXPECT_EQ(count, 2);
    EXPECT_EQ(message.GetInfo("d", &type, &count), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.GetInfo(nullptr, &type, &count), B_BAD_VALUE);

    const char* name = nullptr;
    EXPECT_TRUE(test::FieldAt(message, B_ANY_TYPE, 1, &name, &type, &count));
    EXPECT_STREQ(name, "a");
    EXPECT_EQ(type, type_code(B_STRING_TYPE));
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(test::FieldAt(message, B_INT32_TYPE, 1, &name, &type, &count));
    EXPECT_STREQ(name, "c");
    EXPECT_EQ(count, 2);
    EXPECT_FALSE(test::FieldAt(message, B_INT32_TYPE, 2, &name, &type, &count));
    EXPECT_FALSE(test::FieldAt(message, B_ANY_TYPE, -1, &name, &type, &count));
}

TEST(Message, RemovesValuesAndFields)
{
    BMessage message;
    for (const char* text : {"a", "bb", "", "dddd"})
        message.AddString("texts", text);
    message.AddInt32("number", 1);
    EXPECT_EQ(message.RemoveData("texts", 4), B_BAD_INDEX);
    EXPECT_EQ(message.RemoveData("nothing"), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.RemoveData("texts", 1), B_OK);
    EXPECT_EQ(message.RemoveData("texts"), B_OK);
    const char* text;
    EXPECT_EQ(message.FindString("texts", &text, 0), B_OK);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(message.FindString("texts", &text, 1), B_OK);
    EXPECT_STREQ(text, "dddd");
    EXPECT_EQ(message.RemoveData("texts"), B_OK);
    EXPECT_EQ(message.FindString("texts", &text, 0), B_OK);
    EXPECT_STREQ(text, "dddd");
    EXPECT_EQ(message.AddString("texts", "e"), B_OK);
    EXPECT_EQ(message.FindString("texts", &text, 1), B_OK);
    EXPECT_STREQ(text, "e");
    EXPECT_EQ(message.RemoveData("texts"), B_OK);
    EXPECT_EQ(message.RemoveData("texts"), B_OK);
    EXPECT_FALSE(message.HasData("texts", B_STRING_TYPE));
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 1);
    EXPECT_EQ(message.RemoveName("number"), B_OK);
    EXPECT_EQ(message.RemoveName("number"), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.RemoveName(nullptr), B_BAD_VALUE);
    EXPECT_TRUE(message.IsEmpty());
}

TEST(Message, KeepsItsCodeWhenEmptied)
{
    BMessage message('code');
    message.AddInt32("a", 1);
    EXPECT_EQ(message.MakeEmpty(), B_OK);
    EXPECT_TRUE(message.IsEmpty());
    EXPECT_EQ(message.what, uint32('code'));
}

TEST(Message, TakesNamesUpToTheirLongestLength)
{
    BMessage message;
    EXPECT_EQ(message.AddBool(std::string(BMessage::kMaxNameLength, 'n').c_str(), true), B_OK);
    EXPECT_EQ(message.AddBool(std::string(BMessage::kMaxNameLength + 1, 'n').c_str(), true), B_BAD_VALUE);
    const BMessage inner;
    EXPECT_EQ(message.AddMessage(std::string(BMessage::kMaxNameLength + 1, 'n').c_str(), &inner), B_BAD_VALUE);
    EXPECT_EQ(message.CountNames(B_ANY_TYPE), 1);
}

namespace {

std::string DataIn(const BMessage& message, const char* name, int32 index)
{
    const void* data = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(message.FindData(name, B_RAW_TYPE, &data, &size, index), B_OK);
    return {static_cast<const char*>(data), static_cast<size_t>(size)};
}

/// Returns the message after a round trip through its bytes.
BMessage Reread(const BMessage& message)
{
    std::string flat(static_cast<size_t>(message.FlattenedSize()), '\0');
    EXPECT_EQ(message.Flatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    BMessage again;
    EXPECT_EQ(again.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())), B_OK);
    return again;
}

} // namespace

TEST(Message, ReplacesDataWhateverItsLength)
{
    BMessage message;
    EXPECT_EQ(message.AddData("one", B_RAW_TYPE, "abc", 3), B_OK);
    for (const std::string value : {"", "a", "abcdefgh", "xyz"}) {
        EXPECT_EQ(message.ReplaceData("one", B_RAW_TYPE, value.data(), static_cast<ssize_t>(value.size())), B_OK);
        EXPECT_EQ(DataIn(message, "one", 0), value);
        BMessage fresh;
        fresh.AddData("one", B_RAW_TYPE, value.data(), static_cast<ssize_t>(value.size()));
        EXPECT_EQ(Reread(message).FlattenedSize(), fresh.FlattenedSize()) << "as if it had never been another";
    }
    EXPECT_EQ(message.AddData("one", B_RAW_TYPE, "123", 3), B_OK) << "the size is that of the only value";
    EXPECT_EQ(message.AddData("one", B_RAW_TYPE, "1234", 4), B_BAD_VALUE);

    for (const int32 index : {0, 1, 2}) {
        BMessage many;
        for (const char* value : {"aa", "bb", "cc"})
            EXPECT_EQ(many.AddData("many", B_RAW_TYPE, value, 2), B_OK);
        EXPECT_EQ(many.ReplaceData("many", B_RAW_TYPE, "longer", 6, index), B_OK);
        EXPECT_EQ(many.AddData("many", B_RAW_TYPE, "d", 1), B_OK);
        for (const BMessage& either : {many, Reread(many)}) {
            EXPECT_EQ(DataIn(either, "many", 0), index == 0 ? "longer" : "aa");
            EXPECT_EQ(DataIn(either, "many", 1), index == 1 ? "longer" : "bb");
            EXPECT_EQ(DataIn(either, "many", 2), index == 2 ? "longer" : "cc");
            EXPECT_EQ(DataIn(either, "many", 3), "d");
        }
    }

    EXPECT_EQ(message.AddInt32("number", 7), B_OK);
    EXPECT_EQ(message.ReplaceData("number", B_INT32_TYPE, "12", 2), B_BAD_VALUE) << "its type has a size";
    EXPECT_EQ(message.ReplaceData("number", B_INT32_TYPE, "12345", 5), B_BAD_VALUE);
}

TEST(Message, HoldsDataOfFixedSizeToTheFirstOne)
{
    BMessage message;
    EXPECT_EQ(message.AddData("fixed", B_RAW_TYPE, "abc", 3), B_OK);
    EXPECT_EQ(message.AddData("fixed", B_RAW_TYPE, "de", 2), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("fixed", B_RAW_TYPE, "de", 2, false), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("fixed", B_RAW_TYPE, "def", 3), B_OK);
    EXPECT_EQ(message.ReplaceData("fixed", B_RAW_TYPE, "ghi", 3, 1), B_OK);

    EXPECT_EQ(message.AddData("any", B_RAW_TYPE, "abc", 3, false), B_OK);
    EXPECT_EQ(message.AddData("any", B_RAW_TYPE, "", 0), B_OK);
    EXPECT_EQ(message.AddData("any", B_RAW_TYPE, "de", 2), B_OK);
    EXPECT_EQ(message.ReplaceData("any", B_RAW_TYPE, "four", 4, 0), B_OK);

    const void* data = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(message.FindData("fixed", B_RAW_TYPE, &data, &size, 1), B_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<size_t>(size)), "ghi");
    EXPECT_EQ(message.FindData("any", B_ANY_TYPE, &data, &size, 0), B_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<size_t>(size)), "four");
    EXPECT_EQ(message.FindData("any", B_RAW_TYPE, &data, &size, 1), B_OK);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(message.FindData("any", B_RAW_TYPE, &data, &size, 2), B_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<size_t>(size)), "de");
    EXPECT_EQ(message.FindData("any", B_RAW_TYPE, &data, nullptr, 2), B_OK);
}

TEST(Message, HoldsDataOfAKnownTypeToItsSize)
{
    BMessage message;
    EXPECT_EQ(message.AddData("number", B_INT32_TYPE, "abc", 3), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("number", B_INT32_TYPE, "abcde", 5, false), B_BAD_VALUE);
    EXPECT_TRUE(message.IsEmpty());
    const int32 number = 7;
    EXPECT_EQ(message.AddData("number", B_INT32_TYPE, &number, 4, false), B_OK);
    int32 found = 0;
    EXPECT_EQ(message.FindInt32("number", &found), B_OK);
    EXPECT_EQ(found, 7);
    const rgb_color color = {1, 2, 3, 255};
    EXPECT_EQ(message.AddData("color", B_RGB_COLOR_TYPE, &color, sizeof(color)), B_OK);
    EXPECT_EQ(message.AddData("color", B_RGB_COLOR_TYPE, &color, 3), B_BAD_VALUE);
}

TEST(Message, EndsStringsThatAreAddedAsData)
{
    BMessage message;
    EXPECT_EQ(message.AddData("text", B_STRING_TYPE, "abc", 2), B_OK);
    EXPECT_EQ(message.AddData("text", B_STRING_TYPE, "abc\0def", 8), B_OK);
    EXPECT_EQ(message.AddData("text", B_STRING_TYPE, "", 0), B_OK);
    const char* text;
    EXPECT_EQ(message.FindString("text", &text, 0), B_OK);
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(message.FindString("text", &text, 1), B_OK);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(message.FindString("text", &text, 2), B_OK);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(message.ReplaceData("text", B_STRING_TYPE, "xyz", 2), B_OK);
    EXPECT_EQ(message.FindString("text", &text), B_OK);
    EXPECT_STREQ(text, "xy");
    const void* data;
    ssize_t size = 0;
    EXPECT_EQ(message.FindData("text", B_STRING_TYPE, &data, &size), B_OK);
    EXPECT_EQ(size, 3);
}

TEST(Message, RefusesDataThatIsNone)
{
    BMessage message;
    EXPECT_EQ(message.AddData("a", B_RAW_TYPE, nullptr, 1), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("a", B_RAW_TYPE, "x", -1), B_BAD_VALUE);
    EXPECT_EQ(message.AddData("a", B_MESSAGE_TYPE, "x", 1), B_BAD_TYPE);
    EXPECT_EQ(message.AddData("a", B_ANY_TYPE, "x", 1), B_BAD_TYPE);
    EXPECT_EQ(message.AddString("a", static_cast<const char*>(nullptr)), B_BAD_VALUE);
    EXPECT_EQ(message.AddMessage("a", nullptr), B_BAD_VALUE);
    EXPECT_EQ(message.AddFlat("a", nullptr), B_BAD_VALUE);
    EXPECT_TRUE(message.IsEmpty());
    EXPECT_EQ(message.AddData("many", B_RAW_TYPE, "x", 1, true, INT32_MAX), B_OK);
    EXPECT_EQ(message.AddData("few", B_RAW_TYPE, "x", 1, false, -5), B_OK);
    EXPECT_EQ(message.ReplaceData("many", B_RAW_TYPE, nullptr, 1), B_BAD_VALUE);
    EXPECT_EQ(message.ReplaceData("many", B_RAW_TYPE, "x", -1), B_BAD_VALUE);
    EXPECT_EQ(message.ReplaceData("many", B_ANY_TYPE, "x", 1), B_BAD_TYPE);
    const void* data;
    EXPECT_EQ(message.FindData("many", B_RAW_TYPE, nullptr, nullptr), B_BAD_VALUE);
    const BMessage inner;
    ASSERT_EQ(message.AddMessage("inner", &inner), B_OK);
    EXPECT_EQ(message.FindData("inner", B_ANY_TYPE, &data, nullptr), B_BAD_TYPE);
    EXPECT_EQ(message.FindData("inner", B_MESSAGE_TYPE, &data, nullptr), B_BAD_TYPE);
}

TEST(Message, KeepsMessagesWithTheirPointers)
{
    BMessage inner('innr');
    inner.AddPointer("pointer", &inner);
    BMessage message;
    EXPECT_EQ(message.AddMessage("message", &inner), B_OK);
    inner.what = 'late';
    EXPECT_EQ(message.AddMessage("message", &inner), B_OK);
    BMessage found('keep');
    found.AddInt32("old", 1);
    EXPECT_EQ(message.FindMessage("message", &found, 2), B_BAD_INDEX);
    EXPECT_EQ(found.what, uint32('keep'));
    EXPECT_EQ(message.FindMessage("message", &found), B_OK);
    EXPECT_EQ(found.what, uint32('innr'));
    EXPECT_FALSE(found.HasData("old", B_INT32_TYPE));
    void* pointer = nullptr;
    EXPECT_EQ(found.FindPointer("pointer", &pointer), B_OK);
    EXPECT_EQ(pointer, &inner);
    EXPECT_EQ(message.ReplaceMessage("message", &found, 1), B_OK);
    EXPECT_EQ(message.FindMessage("message", &found, 1), B_OK);
    EXPECT_EQ(found.what, uint32('innr'));
    EXPECT_EQ(message.RemoveData("message"), B_OK);
    EXPECT_TRUE(message.HasData("message", B_MESSAGE_TYPE));
    EXPECT_FALSE(message.HasData("message", B_MESSAGE_TYPE, 1));
    EXPECT_EQ(message.AddInt32("message", 1), B_BAD_TYPE);
    EXPECT_EQ(message.AddInt32("number", 1), B_OK);
    EXPECT_EQ(message.AddMessage("number", &inner), B_BAD_TYPE);
}

TEST(Message, MayBePutIntoItself)
{
    BMessage message('self');
    message.AddInt32("number", 7);
    EXPECT_EQ(message.AddMessage("self", &message), B_OK);
    EXPECT_EQ(message.AddMessage("self", &message), B_OK);
    EXPECT_EQ(message.ReplaceMessage("self", &message, 0), B_OK);
    EXPECT_EQ(message.FindMessage("self", &message, 1), B_OK);
    EXPECT_EQ(message.what, uint32('self'));
    BMessage inner;
    EXPECT_EQ(message.FindMessage("self", &inner), B_OK);
    EXPECT_TRUE(inner.HasData("number", B_INT32_TYPE));
    EXPECT_FALSE(inner.HasData("self", B_MESSAGE_TYPE));
    EXPECT_FALSE(message.HasData("self", B_MESSAGE_TYPE, 1));
}

TEST(Message, KeepsFlattenableObjects)
{
    BMessage message;
    const Stamp first(1), second(2);
    EXPECT_EQ(message.AddFlat("stamp", &first), B_OK);
    EXPECT_EQ(message.AddFlat("stamp", &second), B_OK);
    EXPECT_EQ(message.AddData("stamp", 'STMP', "xy", 2), B_BAD_VALUE);
    Stamp found;
    EXPECT_EQ(message.FindFlat("stamp", &found, 1), B_OK);
    EXPECT_EQ(found.value, 2u);
    EXPECT_EQ(message.FindFlat("stamp", &found), B_OK);
    EXPECT_EQ(found.value, 1u);

    message.AddData("short", 'STMP', "xy", 2);
    EXPECT_EQ(message.FindFlat("short", &found), B_MISMATCHED_VALUES);
    message.AddInt32("number", 5);
    EXPECT_EQ(message.FindFlat("number", &found), B_BAD_TYPE);
    EXPECT_EQ(message.FindFlat("nothing", &found), B_NAME_NOT_FOUND);
    EXPECT_EQ(message.FindFlat("stamp", nullptr), B_BAD_VALUE);
    EXPECT_EQ(found.value, 1u);
}

TEST(Message, ComparesByContent)
{
    BMessage one('code'), other('code');
    EXPECT_TRUE(one.HasSameData(other));
    one.AddInt32("a", 1);
    one.AddString("b", "x");
    EXPECT_FALSE(one.HasSameData(other));
    other.AddString("b", "x");
    other.AddInt32("a", 1);
    EXPECT_TRUE(one.HasSameData(other));
    test::ReplaceInt32(other, "a", 2);
    EXPECT_FALSE(one.HasSameData(other));
    test::ReplaceInt32(other, "a", 1);
    other.what = 'else';
    EXPECT_FALSE(one.HasSameData(other));
    other.what = 'code';
    other.AddString("b", "y");
    EXPECT_FALSE(one.HasSameData(other));
    one.AddMessage("m", &other);
    BMessage copy(one);
    EXPECT_TRUE(copy.HasSameData(one));
    other.RemoveName("b");
    copy.ReplaceMessage("m", &other);
    EXPECT_FALSE(copy.HasSameData(one));
    BMessage int32s, uint32s;
    const int32 number = 1;
    int32s.AddData("n", B_INT32_TYPE, &number, 4);
    uint32s.AddData("n", B_UINT32_TYPE, &number, 4);
    EXPECT_FALSE(int32s.HasSameData(uint32s));
}

TEST(Message, IsCopiedAndMoved)
{
    BMessage message('orig');
    message.AddString("text", "a text that is too long to lie in the object");
    message.AddMessage("inner", &message);
    message.SetNewestWins(true);
    BMessage copy(message);
    EXPECT_TRUE(copy.HasSameData(message));
    EXPECT_TRUE(copy.IsNewestWins());
    test::ReplaceString(copy, "text", "other");
    const char* text;
    EXPECT_EQ(message.FindString("text", &text), B_OK);
    EXPECT_STREQ(text, "a text that is too long to lie in the object");

    BMessage assigned;
    assigned.AddInt32("old", 1);
    assigned = message;
    EXPECT_TRUE(assigned.HasSameData(message));
    assigned = *&assigned;
    EXPECT_TRUE(assigned.HasSameData(message));

    BMessage moved(std::move(assigned));
    EXPECT_TRUE(moved.HasSameData(message));
    EXPECT_TRUE(assigned.IsEmpty());
    assigned = std::move(moved);
    EXPECT_TRUE(assigned.HasSameData(message));
}

TEST(Message, TellsWhereItWasDropped)
{
    BMessage message('drop');
    BPoint offset(9, 9);
    EXPECT_EQ(message.DropPoint(&offset), BPoint(0, 0));
    EXPECT_EQ(offset, BPoint(0, 0));
    kits::MessageAccess::SetDropped(message, BPoint(100, 200), BPoint(3, 4));
    EXPECT_TRUE(message.WasDropped());
    EXPECT_EQ(message.DropPoint(&offset), BPoint(100, 200));
    EXPECT_EQ(offset, BPoint(3, 4));
    EXPECT_EQ(message.DropPoint(), BPoint(100, 200));

    const BMessage copy(message);
    EXPECT_TRUE(copy.WasDropped());
    EXPECT_EQ(copy.DropPoint(), BPoint(100, 200));
    message = BMessage();
    EXPECT_FALSE(message.WasDropped());
    message = copy;
    EXPECT_TRUE(message.WasDropped());
    const BMessage never;
    message = never;
    EXPECT_FALSE(message.WasDropped());
}

TEST(Message, WithAPointerCostsTwoAllocations)
{
    int sampler = 0;
    const AllocationCounter counter;
    const auto message = std::make_unique<BMessage>(1);
    message->AddPointer("Sysinfo*", &sampler);
    EXPECT_LE(counter.Count(), 2u);
    const size_t made = counter.Count();
    const auto copy = std::make_unique<BMessage>(*message);
    EXPECT_LE(counter.Count() - made, 2u);
}
