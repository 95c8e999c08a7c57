// SPDX-License-Identifier: MIT
// Small functions of the application kit: tokens, checksums, texts, archives.

#include "kits/application/Archivable.h"
#include "kits/application/Handler.h"
#include "kits/application/Message.h"
#include "kits/application/Token.h"
#include "kits/application/messages/Crc32.h"
#include "kits/application/messages/MessageText.h"
#include "kits/support/Utf8.h"

#include <gtest/gtest.h>
#include <unistd.h>

TEST(Token, NamesTheProcess)
{
    EXPECT_EQ(kits::TeamIdOf(kits::ThisTeam()), getpid());
    EXPECT_NE(kits::ThisTeam() & 0xFFFFFFFF, 0u);
    EXPECT_EQ(kits::ThisTeam(), kits::ThisTeam());
    EXPECT_FALSE(kits::Address().IsSet());
}

TEST(Token, IsNeverUsedTwice)
{
    kits::token_t last = 0;
    for (int i = 0; i < 100; ++i) {
        const BHandler handler;
        EXPECT_GT(handler.Token(), last);
        last = handler.Token();
    }
}

TEST(Crc32, IsTheOneOfZip)
{
    EXPECT_EQ(kits::Crc32(""), 0u);
    EXPECT_EQ(kits::Crc32("123456789"), 0xCBF43926u);
    EXPECT_EQ(kits::Crc32("a"), 0xE8B7BE43u);
    EXPECT_EQ(kits::Crc32("The quick brown fox jumps over the lazy dog"), 0x414FA339u);
    EXPECT_EQ(kits::Crc32(std::string(32, '\xFF')), 0xFF6CAB0Bu);
}

TEST(MessageText, TellsCodesFromTexts)
{
    EXPECT_EQ(kits::TextOfCode('pref'), "pref");
    EXPECT_EQ(kits::TextOfCode('a b~'), "a b~");
    EXPECT_EQ(kits::TextOfCode(0x3F62129A), "");
    EXPECT_EQ(kits::TextOfCode(0), "");
    uint32 code = 7;
    EXPECT_TRUE(kits::CodeOfText("pref", &code));
    EXPECT_EQ(code, uint32('pref'));
    for (const char* text : {"", "abc", "abcde", "ab\nc",
                             "ab\x80"
                             "c"})
        EXPECT_FALSE(kits::CodeOfText(text, &code)) << text;
    EXPECT_EQ(code, uint32('pref'));
}

TEST(MessageText, KnowsUtf8)
{
    for (const char* text : {"", "abc", "T\xC3\xB6ne", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xED\x9F\xBF",
                             "\xEE\x80\x80", "\xF4\x8F\xBF\xBF", "\xC2\x80", "\xE0\xA0\x80", "\xF0\x90\x80\x80"})
        EXPECT_TRUE(kits::IsUtf8(text)) << text;
    for (const char* text :
         {"\x80", "\xC3", "\xC3x", "\xC0\x80", "\xC1\xBF", "\xE2\x82", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xFE", "\xF0\x9F\x98"})
        EXPECT_FALSE(kits::IsUtf8(text)) << text;
}

TEST(Archivable, KnowsTheClassesOfAnArchive)
{
    BMessage archive;
    EXPECT_FALSE(validate_instantiation(&archive, "BWindow"));
    archive.AddString("class", "BWindow");
    archive.AddString("class", "SmartWindow");
    EXPECT_TRUE(validate_instantiation(&archive, "BWindow"));
    EXPECT_TRUE(validate_instantiation(&archive, "SmartWindow"));
    EXPECT_FALSE(validate_instantiation(&archive, "Smart"));
    EXPECT_FALSE(validate_instantiation(&archive, nullptr));
    EXPECT_FALSE(validate_instantiation(nullptr, "BWindow"));
}
