// SPDX-License-Identifier: MIT
#include "src/chart/ChartTip.h"

#include <gtest/gtest.h>

TEST(ChartTipTest, HasALineForEachSource)
{
    ChartTip tip;
    EXPECT_EQ(tip.Text(), "");
    tip.AddSource({100, 100, 220, 0}, "All CPUs", "12.5 %");
    EXPECT_EQ(tip.Text(), "<qt><p style=\"white-space:nowrap\"><span "
                          "style=\"background-color:#6464dc\">&nbsp;&nbsp;&nbsp;</span> All CPUs&nbsp; 12.5 %");
    tip.AddSource({0, 15, 255, 255}, "Used memory", "100.0 %");
    EXPECT_EQ(tip.Text(),
              "<qt><p style=\"white-space:nowrap\"><span style=\"background-color:#6464dc\">&nbsp;&nbsp;&nbsp;</span> "
              "All CPUs&nbsp; 12.5 %"
              "<br><span style=\"background-color:#000fff\">&nbsp;&nbsp;&nbsp;</span> Used memory&nbsp; 100.0 %");
}
