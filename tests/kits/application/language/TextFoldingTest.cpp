// SPDX-License-Identifier: MIT
#include "kits/application/TextFolding.h"

#include <gtest/gtest.h>

using kits::FoldText;

TEST(TextFoldingTest, UpperAndLowerCaseAreTheSameInAnyLanguage)
{
    EXPECT_EQ(FoldText("Used MEMORY"), "used memory");
    EXPECT_EQ(FoldText("UNTÄTIG"), FoldText("untätig"));
    EXPECT_EQ(FoldText("ПАМЯТЬ"), FoldText("память"));
    EXPECT_EQ(FoldText("ΜΝΉΜΗΣ"), FoldText("μνήμης"));
    EXPECT_EQ(FoldText("GROẞ"), FoldText("groß"));
    EXPECT_NE(FoldText("untätig"), FoldText("untatig"));
}

TEST(TextFoldingTest, ComposedAndDecomposedLettersAreTheSame)
{
    EXPECT_EQ(FoldText("A\xcc\x88"), FoldText("ä"));
    EXPECT_EQ(FoldText("untA\xcc\x88tig"), "untätig");
}

TEST(TextFoldingTest, BlanksOnlyPartWords)
{
    EXPECT_EQ(FoldText("  CPU\t\xc2\xa0 25 \n"), "cpu 25");
    EXPECT_EQ(FoldText(""), "");
    EXPECT_EQ(FoldText(" \t"), "");
}

TEST(TextFoldingTest, AnyBytesGiveText)
{
    EXPECT_EQ(FoldText("\xff\xfe\x80"), "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd");
}
