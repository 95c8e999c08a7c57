// SPDX-License-Identifier: MIT
#include "kits/application/Field.h"

#include "kits/application/Messenger.h"
#include "kits/support/Color.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using kits::Field;
using kits::Outside;

namespace {

/// A flattened number; may have more than two bytes.
class Plate : public BFlattenable {
public:
    float size = 7;

    float Size() const { return size; }
    bool IsFixedSize() const override { return true; }
    type_code TypeCode() const override { return 'PLAT'; }
    ssize_t FlattenedSize() const override { return sizeof(size); }
    bool AllowsTypeCode(type_code code) const override { return code == TypeCode(); }
    status_t Flatten(void* buffer, ssize_t) const override
    {
        std::memcpy(buffer, &size, sizeof(size));
        return B_OK;
    }
    status_t Unflatten(type_code, const void* buffer, ssize_t bytes) override
    {
        if (bytes < FlattenedSize())
            return B_BAD_VALUE;
        std::memcpy(&size, buffer, sizeof(size));
        return B_OK;
    }
};

struct Record {
    int32 first;
    int32 second;
};

const Field<int16> kCount("count", 2, 50, 10);
const Field<int64> kDelay("delay", 100, 5000, 200, Outside::kHeld);
const Field<float> kShare("share", 0, 1, 0.5f, Outside::kLeftOut, 3);
const Field<bool> kShown("shown", true);
const Field<BPoint> kPlace("place", -10, 10, BPoint(1, 2));
const Field<BRect> kFrame("frame", 0, 100, BRect(0, 0, 5, 5));
const Field<BRect> kHeldFrame("held", 10, 100, BRect(), Outside::kHeld);
const Field<std::string> kName("name", 1, 8);
const Field<std::string> kTitle("title", 0, 8, Outside::kHeld);
const Field<std::string_view, B_RAW_TYPE> kTimes("times", 0, 8, Outside::kHeld);
const Field<std::string_view, B_MIME_TYPE> kPlainText("text/plain", 1, 8);
const Field<rgb_color, B_RGB_COLOR_TYPE> kColor("color");
const Field<Record> kRecord("record");
const Field<void*> kAddress("address");
const Field<BMessage> kInner("inner", 2);
const Field<BMessenger> kMessenger("messenger");
const Field<Plate, 'PLAT'> kPlate("plate", 4, 200);

const float kNoNumber = std::numeric_limits<float>::quiet_NaN();
const float kEndless = std::numeric_limits<float>::infinity();

} // namespace

TEST(FieldTest, GivesBackWhatWasAdded)
{
    BMessage message;
    BMessage inner('innr');
    int here = 0;
    EXPECT_EQ(kCount.Add(&message, 50), B_OK);
    EXPECT_EQ(kShown.Add(&message, false), B_OK);
    EXPECT_EQ(kPlace.Add(&message, BPoint(-10, 10)), B_OK);
    EXPECT_EQ(kFrame.Add(&message, BRect(-5, 5, 5, 105)), B_OK);
    EXPECT_EQ(kName.Add(&message, "eight it"), B_OK);
    EXPECT_EQ(kTimes.Add(&message, std::string_view("a\0b", 3)), B_OK);
    EXPECT_EQ(kPlainText.Add(&message, "text"), B_OK);
    EXPECT_EQ(kColor.Add(&message, make_color(1, 2, 3, 4)), B_OK);
    EXPECT_EQ(kRecord.Add(&message, Record{1, 2}), B_OK);
    EXPECT_EQ(kAddress.Add(&message, &here), B_OK);
    EXPECT_EQ(kInner.Add(&message, inner), B_OK);
    EXPECT_EQ(kMessenger.Add(&message, BMessenger()), B_OK);
    EXPECT_EQ(kPlate.Add(&message, Plate()), B_OK);

    EXPECT_EQ(kCount.Get(message), 50);
    EXPECT_FALSE(kShown.Get(message));
    EXPECT_EQ(kPlace.Get(message), BPoint(-10, 10));
    EXPECT_EQ(kFrame.Get(message), BRect(-5, 5, 5, 105));
    EXPECT_EQ(kName.Get(message), "eight it");
    EXPECT_EQ(kTimes.Get(message), std::string_view("a\0b", 3));
    EXPECT_EQ(kPlainText.Get(message), "text");
    EXPECT_EQ(kColor.Get(message), make_color(1, 2, 3, 4));
    EXPECT_EQ(kRecord.Get(message).second, 2);
    EXPECT_EQ(kAddress.Get(message), &here);
    EXPECT_EQ(kInner.Get(message).what, inner.what);
    BMessenger messenger;
    EXPECT_TRUE(kMessenger.Find(message, &messenger));
    EXPECT_EQ(kPlate.Get(message).size, 7);
}

TEST(FieldTest, StandsInTheMessageAsTheMessagesOwnCallsPutIt)
{
    BMessage own;
    BMessage message;
    BMessage inner('innr');
    const rgb_color color = make_color(1, 2, 3);
    Plate plate;
    own.AddInt16("count", 3);
    own.AddInt64("delay", 4);
    own.AddFloat("share", 0.25f);
    own.AddBool("shown", true);
    own.AddPoint("place", BPoint(1, 2));
    own.AddRect("frame", BRect(1, 2, 3, 4));
    own.AddString("name", "n");
    own.AddData("text/plain", B_MIME_TYPE, "x", 1);
    own.AddData("color", B_RGB_COLOR_TYPE, &color, sizeof(color));
    own.AddPointer("address", &own);
    own.AddMessage("inner", &inner);
    own.AddMessenger("messenger", BMessenger());
    own.AddFlat("plate", &plate);

    kCount.Add(&message, 3);
    kDelay.Add(&message, 4);
    kShare.Add(&message, 0.25f);
    kShown.Add(&message, true);
    kPlace.Add(&message, BPoint(1, 2));
    kFrame.Add(&message, BRect(1, 2, 3, 4));
    kName.Add(&message, "n");
    kPlainText.Add(&message, "x");
    kColor.Add(&message, color);
    kAddress.Add(&message, &own);
    kInner.Add(&message, inner);
    kMessenger.Add(&message, BMessenger());
    kPlate.Add(&message, plate);
    EXPECT_TRUE(message.HasSameData(own));
}

TEST(FieldTest, WhatIsAbsentLeavesTheValueAloneAndGivesTheDefault)
{
    const BMessage empty;
    int16 count = 77;
    EXPECT_FALSE(kCount.Find(empty, &count));
    EXPECT_EQ(count, 77);
    EXPECT_EQ(kCount.Get(empty), 10);
    EXPECT_TRUE(kShown.Get(empty));
    EXPECT_EQ(kPlace.Get(empty), BPoint(1, 2));
    EXPECT_EQ(kFrame.Get(empty), BRect(0, 0, 5, 5));
    EXPECT_EQ(kName.Get(empty), "");
    EXPECT_EQ(kAddress.Get(empty), nullptr);
    EXPECT_TRUE(kInner.Get(empty).IsEmpty());
    EXPECT_EQ(kColor.Get(empty), rgb_color());
    EXPECT_EQ(kCount.Count(empty), 0);
    EXPECT_FALSE(kCount.IsIn(empty));
}

TEST(FieldTest, WhatLiesOutsideTheRangeIsLeftOut)
{
    for (const int16 outside : {-1, 1, 51, 32767}) {
        BMessage message;
        message.AddInt16("count", outside);
        EXPECT_EQ(kCount.Get(message), 10) << outside;
        EXPECT_FALSE(kCount.Holds(outside)) << outside;
    }
    for (const float outside : {-0.001f, 1.001f, kNoNumber, kEndless, -kEndless}) {
        BMessage message;
        message.AddFloat("share", outside);
        EXPECT_EQ(kShare.Get(message), 0.5f) << outside;
        EXPECT_FALSE(kShare.Holds(outside)) << outside;
    }
    EXPECT_TRUE(kShare.Holds(0));
    EXPECT_TRUE(kShare.Holds(1));
    for (const BPoint outside : {BPoint(0, 11), BPoint(-11, 0), BPoint(kNoNumber, 0), BPoint(0, kEndless)}) {
        BMessage message;
        message.AddPoint("place", outside);
        EXPECT_EQ(kPlace.Get(message), BPoint(1, 2));
    }
    for (const BRect outside : {BRect(0, 0, 101, 5), BRect(0, 0, -1, 5), BRect(0, 0, 5, kNoNumber),
                                BRect(kEndless, 0, kEndless, 5), BRect(0, 200'000, 5, 200'000)}) {
        BMessage message;
        message.AddRect("frame", outside);
        EXPECT_EQ(kFrame.Get(message), BRect(0, 0, 5, 5));
        EXPECT_FALSE(kFrame.Holds(outside));
    }
    for (const float outside : {3.9f, 201.0f, kNoNumber}) {
        BMessage message;
        Plate plate;
        plate.size = outside;
        message.AddFlat("plate", &plate);
        EXPECT_EQ(kPlate.Get(message).size, 7) << outside;
        EXPECT_FALSE(kPlate.Holds(plate)) << outside;
    }
    for (const char* outside : {"", "nine it i"}) {
        BMessage message;
        message.AddString("name", outside);
        message.AddData("text/plain", B_MIME_TYPE, outside, static_cast<ssize_t>(std::strlen(outside)));
        EXPECT_EQ(kName.Get(message), "");
        EXPECT_EQ(kPlainText.Get(message), "");
    }
}

TEST(FieldTest, WhatIsHeldIsBroughtToTheNearestEnd)
{
    const int64 least = std::numeric_limits<int64>::min();
    const int64 most = std::numeric_limits<int64>::max();
    for (const auto& [stored, held] : {std::pair{int64{99}, int64{100}}, {5001, 5000}, {least, 100}, {most, 5000}}) {
        BMessage message;
        message.AddInt64("delay", stored);
        EXPECT_EQ(kDelay.Get(message), held) << stored;
    }
    BMessage message;
    message.AddRect("held", BRect(5, 5, 10, 1000));
    EXPECT_EQ(kHeldFrame.Get(message), BRect(5, 5, 15, 105));
    for (const BRect without : {BRect(5, 5, 4, 10), BRect(0, 0, kNoNumber, 10), BRect(kEndless, 0, kEndless, 1)}) {
        message.MakeEmpty();
        message.AddRect("held", without);
        EXPECT_FALSE(kHeldFrame.Get(message).IsValid());
    }
    message.AddString("title", "123456\u20ac");
    EXPECT_EQ(kTitle.Get(message), "123456");
    message.AddData("times", B_RAW_TYPE, "0123456789", 10);
    EXPECT_EQ(kTimes.Get(message), "01234567");
}

TEST(FieldTest, FieldsOfAnotherTypeCountAsAbsent)
{
    BMessage message;
    message.AddInt32("count", 3);
    message.AddString("inner", "text");
    message.AddMessage("name", &message);
    message.AddInt8("plate", 1);
    message.AddData("color", B_RAW_TYPE, "1234", 4);
    EXPECT_EQ(kCount.Get(message), 10);
    EXPECT_FALSE(kCount.IsIn(message));
    EXPECT_TRUE(kInner.Get(message).IsEmpty());
    EXPECT_EQ(kName.Get(message), "");
    EXPECT_EQ(kPlate.Get(message).size, 7);
    EXPECT_EQ(kColor.Get(message), rgb_color());
    EXPECT_EQ(kCount.Add(&message, 3), B_BAD_TYPE);
    EXPECT_EQ(kCount.Set(&message, 3), B_BAD_TYPE);
}

TEST(FieldTest, RecordsOfAnotherLengthCountAsAbsent)
{
    for (const ssize_t size : {0, 7, 9}) {
        BMessage message;
        message.AddData("record", B_RAW_TYPE, "123456789", size);
        Record record = {1, 2};
        EXPECT_FALSE(kRecord.Find(message, &record));
        EXPECT_EQ(record.first, 1);
    }
}

TEST(FieldTest, TakesNoMoreValuesThanDeclared)
{
    BMessage message;
    for (const float share : {0.0f, 2.0f, 0.75f, 1.0f}) {
        kShare.Add(&message, share);
        message.AddMessage("inner", &message);
    }
    EXPECT_EQ(kShare.Count(message), 3);
    EXPECT_EQ(kShare.Get(message, 0), 0);
    EXPECT_EQ(kShare.Get(message, 1), 0.5f) << "out of range, between others";
    EXPECT_EQ(kShare.Get(message, 2), 0.75f);
    float share = -1;
    for (const int32 index : {-1, 3, 4})
        EXPECT_FALSE(kShare.Find(message, &share, index));
    BMessage inner;
    EXPECT_TRUE(kInner.Find(message, &inner, 1));
    EXPECT_FALSE(kInner.Find(message, &inner, 2));
}

TEST(FieldTest, SettingReplacesAValueWhereItStands)
{
    BMessage message;
    EXPECT_EQ(kTimes.Set(&message, "long"), B_OK);
    EXPECT_EQ(kShare.Set(&message, 0.25f), B_OK);
    EXPECT_EQ(kTimes.Set(&message, "1"), B_OK);
    EXPECT_EQ(kShare.Set(&message, 0.5f, 1), B_OK) << "there is no second value yet";
    EXPECT_EQ(kShare.Set(&message, 0.75f, 1), B_OK);
    EXPECT_EQ(kName.Set(&message, "long"), B_OK);
    EXPECT_EQ(kName.Set(&message, "longer"), B_OK);
    BMessage inner('inn2');
    EXPECT_EQ(kInner.Set(&message, BMessage('inn1')), B_OK);
    EXPECT_EQ(kInner.Set(&message, inner), B_OK);
    EXPECT_EQ(kTimes.Get(message), "1");
    EXPECT_EQ(kShare.Get(message), 0.25f);
    EXPECT_EQ(kShare.Get(message, 1), 0.75f);
    EXPECT_EQ(kShare.Count(message), 2);
    EXPECT_EQ(kName.Get(message), "longer");
    EXPECT_EQ(kInner.Get(message).what, inner.what);
    EXPECT_EQ(kInner.Count(message), 1);
    kShare.Remove(&message);
    EXPECT_FALSE(kShare.IsIn(message));
}

TEST(FieldTest, AllNamesEveryFieldOnce)
{
    int count = 0;
    for (const kits::AnyField* field = kits::AnyField::All(); field != nullptr; field = field->Next())
        count += std::strcmp(field->Name(), "share") == 0 ? 1 : 0;
    EXPECT_EQ(count, 1);
}

TEST(FieldTest, CopiesWhatIsToBeHadOfAValue)
{
    BMessage from;
    BMessage into;
    from.AddInt64("delay", 1);
    from.AddInt16("count", 1);
    EXPECT_TRUE(kDelay.Copy(from, &into));
    EXPECT_FALSE(kCount.Copy(from, &into));
    EXPECT_EQ(kDelay.Get(into), 100);
    EXPECT_EQ(into.CountNames(B_ANY_TYPE), 1);
}

TEST(FieldTest, CutsTextsBetweenCharacters)
{
    EXPECT_EQ(kits::CutLength("123", 3), 3u);
    EXPECT_EQ(kits::CutLength("123", 2), 2u);
    EXPECT_EQ(kits::CutLength("1\u20ac2", 3), 1u);
    EXPECT_EQ(kits::CutLength("1\u20ac2", 4), 4u);
    EXPECT_EQ(kits::CutLength("\u20ac", 2), 0u);
}
