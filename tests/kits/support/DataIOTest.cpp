// SPDX-License-Identifier: MIT
#include "kits/support/DataIO.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string Contents(const BMallocIO& io)
{
    return std::string(static_cast<const char*>(io.Buffer()), io.BufferLength());
}

} // namespace

TEST(MallocIOTest, GoesOnFromItsPosition)
{
    BMallocIO io;
    EXPECT_EQ(io.Write("hello ", 6), 6);
    EXPECT_EQ(io.Write("world", 5), 5);
    EXPECT_EQ(io.Position(), 11);
    EXPECT_EQ(Contents(io), "hello world");
    EXPECT_EQ(io.Seek(6, B_SEEK_BEGIN), 6);
    char buffer[16] = "";
    EXPECT_EQ(io.Read(buffer, sizeof(buffer)), 5);
    EXPECT_STREQ(buffer, "world");
    EXPECT_EQ(io.Read(buffer, sizeof(buffer)), 0);
    EXPECT_EQ(io.Position(), 11);
}

TEST(MallocIOTest, ReadsAndWritesAtAPlace)
{
    BMallocIO io;
    EXPECT_EQ(io.WriteAt(3, "abc", 3), 3);
    EXPECT_EQ(Contents(io), std::string("\0\0\0abc", 6)) << "the gap is filled";
    EXPECT_EQ(io.WriteAt(4, "XY", 2), 2);
    EXPECT_EQ(Contents(io), std::string("\0\0\0aXY", 6));
    EXPECT_EQ(io.Position(), 0);
    char buffer[2];
    EXPECT_EQ(io.ReadAt(4, buffer, 2), 2);
    EXPECT_EQ(std::string(buffer, 2), "XY");
    EXPECT_EQ(io.ReadAt(6, buffer, 2), 0);
    EXPECT_EQ(io.ReadAt(INT64_MAX, buffer, 2), 0);
    EXPECT_EQ(io.WriteAt(9, nullptr, 0), 0);
    EXPECT_EQ(io.BufferLength(), 6u);
}

TEST(MallocIOTest, Seeks)
{
    BMallocIO io;
    io.Write("0123456789", 10);
    EXPECT_EQ(io.Seek(-3, B_SEEK_END), 7);
    EXPECT_EQ(io.Seek(-2, B_SEEK_CURRENT), 5);
    EXPECT_EQ(io.Seek(-6, B_SEEK_CURRENT), B_BAD_VALUE);
    EXPECT_EQ(io.Seek(INT64_MAX, B_SEEK_CURRENT), B_BAD_VALUE);
    EXPECT_EQ(io.Seek(0, 7), B_BAD_VALUE);
    EXPECT_EQ(io.Position(), 5);
    EXPECT_EQ(io.Seek(100, B_SEEK_BEGIN), 100);
    char byte;
    EXPECT_EQ(io.Read(&byte, 1), 0);
}

TEST(MallocIOTest, ChangesItsSize)
{
    BMallocIO io;
    off_t size = -1;
    EXPECT_EQ(io.SetSize(3), B_OK);
    EXPECT_EQ(io.GetSize(&size), B_OK);
    EXPECT_EQ(size, 3);
    io.WriteAt(0, "abc", 3);
    EXPECT_EQ(io.SetSize(1), B_OK);
    EXPECT_EQ(Contents(io), "a");
    EXPECT_EQ(io.SetSize(-1), B_BAD_VALUE);
    EXPECT_EQ(io.GetSize(nullptr), B_BAD_VALUE);
}

TEST(MallocIOTest, RefusesWhatCannotBe)
{
    BMallocIO io;
    io.Write("abc", 3);
    char buffer[4];
    EXPECT_EQ(io.ReadAt(-1, buffer, 1), B_BAD_VALUE);
    EXPECT_EQ(io.WriteAt(-1, buffer, 1), B_BAD_VALUE);
    EXPECT_EQ(io.ReadAt(0, nullptr, 1), B_BAD_VALUE);
    EXPECT_EQ(io.WriteAt(0, nullptr, 1), B_BAD_VALUE);
    EXPECT_EQ(io.WriteAt(INT64_MAX, "abc", 3), B_NO_MEMORY);
    EXPECT_EQ(io.WriteAt(INT32_MAX, "a", 1), B_NO_MEMORY);
    EXPECT_EQ(io.SetSize(INT64_MAX), B_NO_MEMORY);
    EXPECT_EQ(Contents(io), "abc");
}
