// SPDX-License-Identifier: MIT
#include "kits/kernel/Errors.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

TEST(ErrorsTest, HaveTheirNumbers)
{
    EXPECT_EQ(B_OK, 0);
    EXPECT_EQ(B_ERROR, -1);
    EXPECT_EQ(static_cast<uint32>(B_NO_MEMORY), 0x80000000u);
    EXPECT_EQ(static_cast<uint32>(B_NO_INIT), 0x8000000Du);
    EXPECT_EQ(static_cast<uint32>(B_BAD_THREAD_ID), 0x80001100u);
    EXPECT_EQ(static_cast<uint32>(B_NO_MORE_THREADS), 0x80001102u);
    EXPECT_EQ(static_cast<uint32>(B_BAD_REPLY), 0x80002000u);
    EXPECT_EQ(static_cast<uint32>(B_ENTRY_NOT_FOUND), 0x80006003u);
}

TEST(ErrorsTest, ComeFromTheSystems)
{
    EXPECT_EQ(kits::StatusFromErrno(0), B_OK);
    EXPECT_EQ(kits::StatusFromErrno(ENOENT), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(kits::StatusFromErrno(ENOSPC), B_DEVICE_FULL);
    EXPECT_EQ(kits::StatusFromErrno(EACCES), B_PERMISSION_DENIED);
    EXPECT_EQ(kits::StatusFromErrno(987654), B_ERROR);
}

TEST(ErrorsTest, HaveTexts)
{
    EXPECT_STREQ(kits::StatusText(B_DEVICE_FULL), "No space left");
    EXPECT_STREQ(kits::StatusText(B_OK), "No error");
    EXPECT_STREQ(kits::StatusText(17), "No error");
    EXPECT_STREQ(kits::StatusText(INT32_MIN + 0x7777), "Unknown error");
}
