// SPDX-License-Identifier: MIT
#include "tools/resources/JsonMessage.h"

#include "kits/application/Message.h"
#include "kits/support/Point.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

/// Makes the message, which must succeed.
BMessage Made(std::string_view json)
{
    BMessage message;
    std::string error;
    EXPECT_TRUE(MessageFromJson(json, &message, &error)) << error;
    return message;
}

/// Returns the error for JSON that is no message.
std::string ErrorOf(std::string_view json)
{
    BMessage message;
    std::string error;
    EXPECT_FALSE(MessageFromJson(json, &message, &error)) << json;
    return error;
}

} // namespace

TEST(JsonMessage, HasEveryType)
{
    BMessage inner('inne');
    inner.AddBool("yes", true);
    BMessage expected('pref');
    expected.AddBool("bool", false);
    expected.AddInt8("int8", -128);
    expected.AddInt16("int16", 32767);
    expected.AddInt32("int32", -2147483647 - 1);
    expected.AddInt64("int64", 9007199254740993);
    expected.AddFloat("float", 0.1f);
    expected.AddDouble("double", 0.1);
    expected.AddString("string", "Zeile\n\xc3\xa4");
    expected.AddPoint("point", BPoint(1, -2.5));
    expected.AddRect("rect", BRect(0, 1, 2, 3.5));
    expected.AddData("opaque", B_RAW_TYPE, "\x01\xab\xff\xff", 4);
    expected.AddData("color", B_RAW_TYPE, "\x01\xab\xff\x00", 4);
    expected.AddMessage("message", &inner);

    const BMessage message = Made(R"({
        "what": "pref",
        "// bool": "a remark",
        "bool: bool": false,
        "int8: int8": -128,
        "int16: int16": 32767,
        "int32: int32": -2147483648,
        "int64: int64": 9007199254740993,
        "float: float": 0.1,
        "double: double": 0.1,
        "string: string": "Zeile\n\u00e4",
        "point: point": [1, -2.5],
        "rect: rect": [0, 1, 2, 3.5],
        "opaque: color": "#01abFF",
        "color: color": "#01abff00",
        "message: message": { "what": "inne", "yes: bool": true }
    })");
    EXPECT_TRUE(message.HasSameData(expected));
}

TEST(JsonMessage, HasFieldsOfSeveralValuesInOrder)
{
    BMessage expected;
    for (const int32 number : {3, 1, 2})
        expected.AddInt32("sw:numbers", number);
    EXPECT_TRUE(Made(R"({ "sw:numbers: int32[]": [3, 1, 2], "none: bool[]": [] })").HasSameData(expected));
}

TEST(JsonMessage, MayBeEmpty)
{
    EXPECT_TRUE(Made("{}").HasSameData(BMessage()));
}

TEST(JsonMessage, TellsWhereTheJsonIsWrong)
{
    EXPECT_EQ(ErrorOf("{\n\n  \"a: bool\" true\n}").substr(0, 7), "line 3:");
    EXPECT_NE(ErrorOf(""), "");
    EXPECT_EQ(ErrorOf("[]"), "not an object");
}

TEST(JsonMessage, TellsWhichFieldIsWrong)
{
    EXPECT_EQ(ErrorOf(R"({ "a": 1 })"), "a: no type");
    EXPECT_EQ(ErrorOf(R"({ ": bool": true })"), ": bool: no type");
    EXPECT_EQ(ErrorOf(R"({ "a: word": 1 })"), "a: word: no such type: word");
    EXPECT_EQ(ErrorOf(R"({ "what": "abc" })"), "what: not four characters");
    EXPECT_EQ(ErrorOf(R"({ "what": 1 })"), "what: not four characters");
    EXPECT_EQ(ErrorOf(R"({ "a: int8[]": 1 })"), "a: int8[]: not an array");
    EXPECT_EQ(ErrorOf(R"({ "a: int8[]": [1, 2, "3"] })"), "a: int8[][2]: not a value of type int8");
    EXPECT_EQ(ErrorOf(R"({ "a: int8": 1, "a: int16": 1 })"), "a: int8: the field is there already");
    EXPECT_EQ(ErrorOf(R"({ "m: message": { "b: bool": 1 } })"), "m: message / b: bool: not a value of type bool");
}

TEST(JsonMessage, HoldsValuesToTheirTypes)
{
    for (const char* const json : {
             R"({ "a: int8": 128 })",
             R"({ "a: int8": 1.5 })",
             R"({ "a: int8": "1" })",
             R"({ "a: int16": -32769 })",
             R"({ "a: int32": 2147483648 })",
             R"({ "a: int64": 1e30 })",
             R"({ "a: float": 1e39 })",
             R"({ "a: float": true })",
             R"({ "a: double": "1" })",
             R"({ "a: string": 1 })",
             R"({ "a: point": [1] })",
             R"({ "a: point": [1, "2"] })",
             R"({ "a: rect": [1, 2, 3, 4, 5] })",
             R"({ "a: rect": 1 })",
             R"({ "a: color": "#12345" })",
             R"({ "a: color": "#12345g" })",
             R"({ "a: color": "1234567" })",
             R"({ "a: message": [] })",
         })
        EXPECT_NE(ErrorOf(json).find("not a value of type"), std::string::npos) << json;
}
