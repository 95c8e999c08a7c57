// SPDX-License-Identifier: MIT
#include "kits/interface/controls/MenuPart.h"

#include <gtest/gtest.h>

using Labels = std::vector<std::string>;

TEST(MenuLabelsTest, EachLabelGetsALetterOfItsOwn)
{
    EXPECT_EQ(kits::WithTriggers({"Preferences", "About", "Quit"}), (Labels{"&Preferences", "&About", "&Quit"}));
    EXPECT_EQ(kits::WithTriggers({"Pause", "Preferences..."}), (Labels{"&Pause", "P&references..."}));
}

TEST(MenuLabelsTest, WordsGoFirst)
{
    EXPECT_EQ(kits::WithTriggers({"Add", "Add new chart"}), (Labels{"&Add", "Add &new chart"}));
}

TEST(MenuLabelsTest, WhenThereAreTooFewSomeGoWithout)
{
    EXPECT_EQ(kits::WithTriggers({"a", "A", ""}), (Labels{"&a", "A", ""}));
}

TEST(MenuLabelsTest, AmpersandsAndOtherSignsStay)
{
    EXPECT_EQ(kits::WithTriggers({"Cut & paste", "< none >", "負荷"}), (Labels{"&Cut && paste", "< &none >", "負荷"}));
}
