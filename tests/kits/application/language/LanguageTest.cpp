// SPDX-License-Identifier: MIT
#include "kits/application/Language.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class Language : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})
            unsetenv(name);
    }

    static std::string Wanted()
    {
        std::string all;
        for (const std::string& language : kits::WantedLanguages())
            all += language + " ";
        return all;
    }
};

} // namespace

TEST_F(Language, IsTheProgramsOwnWhereNothingIsAskedFor)
{
    EXPECT_EQ(Wanted(), "");
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "en_GB.UTF-8", "en", ""}) {
        setenv("LANG", locale, 1);
        EXPECT_EQ(Wanted(), "") << locale;
    }
}

TEST_F(Language, IsThatOfTheMessages)
{
    setenv("LANG", "fr_FR.UTF-8", 1);
    EXPECT_EQ(Wanted(), "fr_FR fr ");
    setenv("LC_MESSAGES", "de", 1);
    EXPECT_EQ(Wanted(), "de ");
    setenv("LC_ALL", "de_AT@euro", 1);
    EXPECT_EQ(Wanted(), "de_AT de ");
    setenv("LC_ALL", "", 1);
    EXPECT_EQ(Wanted(), "de ");
}

TEST_F(Language, MayBeAListThatEndsWithEnglish)
{
    setenv("LANG", "fr_FR.UTF-8", 1);
    setenv("LANGUAGE", "sv:de_CH::en_GB:es", 1);
    EXPECT_EQ(Wanted(), "sv de_CH de ");
    setenv("LANG", "C.UTF-8", 1);
    EXPECT_EQ(Wanted(), "sv de_CH de ");
    setenv("LANG", "C", 1);
    EXPECT_EQ(Wanted(), "");
}

TEST_F(Language, IsNeverAPath)
{
    setenv("LANG", "../../etc/passwd", 1);
    EXPECT_EQ(Wanted(), "");
}

TEST_F(Language, LeavesTextsThatHaveNoTranslation)
{
    setenv("LANG", "de_DE.UTF-8", 1);
    kits::UseWantedLanguage();
    EXPECT_STREQ(kits::CurrentLanguage(), "");
    const char* const text = "Nobody translates this";
    EXPECT_EQ(kits::Translate(text), text);
    EXPECT_EQ(kits::Translate(nullptr), nullptr);
}

TEST_F(Language, FillsValuesIn)
{
    EXPECT_EQ(kits::Filled("%2 of %1", {"ten", "one"}), "one of ten");
    EXPECT_EQ(kits::Filled("100 %, %3, %", {"x"}), "100 %, %3, %");
    EXPECT_EQ(kits::Filled("%1%1", {"%1"}), "%1%1");
    EXPECT_EQ(kits::Filled("", {}), "");
}
