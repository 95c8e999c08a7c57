// SPDX-License-Identifier: MIT
#include "kits/support/Flattenable.h"

#include "kits/support/TypeConstants.h"

#include <gtest/gtest.h>

namespace {

class Nothing : public BFlattenable {
public:
    bool IsFixedSize() const override { return true; }
    type_code TypeCode() const override { return B_RAW_TYPE; }
    ssize_t FlattenedSize() const override { return 0; }
    status_t Flatten(void*, ssize_t) const override { return B_OK; }
    status_t Unflatten(type_code, const void*, ssize_t) override { return B_OK; }
};

} // namespace

TEST(FlattenableTest, AllowsItsOwnTypeUnlessToldOtherwise)
{
    const Nothing nothing;
    EXPECT_TRUE(nothing.AllowsTypeCode(B_RAW_TYPE));
    EXPECT_FALSE(nothing.AllowsTypeCode(B_ANY_TYPE));
}

TEST(TypeConstantsTest, HaveTheirNumbers)
{
    EXPECT_EQ(B_INT32_TYPE, 0x4C4F4E47u);
    EXPECT_EQ(B_RAW_TYPE, 0x52415754u);
    EXPECT_EQ(B_STRING_TYPE, 0x43535452u);
    EXPECT_EQ(B_MESSAGE_TYPE, 0x4D534747u);
}
