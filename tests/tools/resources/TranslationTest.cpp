// SPDX-License-Identifier: MIT
#include "tools/resources/Translation.h"

#include "kits/application/Message.h"

#include <gtest/gtest.h>

TEST(Translation, HasWhatIsFinished)
{
    BMessage message;
    std::string error;
    ASSERT_TRUE(
        TranslationFromTs("<?xml version=\"1.0\"?><!DOCTYPE TS><TS version=\"2.1\" language=\"de\"><context>"
                          "<name>Qel</name>"
                          "<message><source>Cut &amp; paste</source><translation>\xc3\x84</translation></message>"
                          "<message><source>a</source><translation type=\"unfinished\">b</translation></message>"
                          "<message><source>c</source><translation type=\"vanished\">d</translation></message>"
                          "<message><source>e</source><translation></translation></message>"
                          "<message><source>f</source><translation>g&#9;h</translation></message>"
                          "</context></TS>",
                          &message, &error));
    const char* text = nullptr;
    ASSERT_EQ(message.FindString("source", &text, 0), B_OK);
    EXPECT_STREQ(text, "Cut & paste");
    ASSERT_EQ(message.FindString("text", &text, 0), B_OK);
    EXPECT_STREQ(text, "\xc3\x84");
    ASSERT_EQ(message.FindString("source", &text, 1), B_OK);
    EXPECT_STREQ(text, "f");
    ASSERT_EQ(message.FindString("text", &text, 1), B_OK);
    EXPECT_STREQ(text, "g\th");
    EXPECT_NE(message.FindString("source", &text, 2), B_OK);
}

TEST(Translation, SaysWhereAFileIsBroken)
{
    BMessage message;
    std::string error;
    EXPECT_FALSE(TranslationFromTs("<TS>\n<context></TS>", &message, &error));
    EXPECT_EQ(error.substr(0, 7), "line 2:");
}
