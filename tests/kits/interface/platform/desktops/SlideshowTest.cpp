// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/Slideshow.h"

#include <gtest/gtest.h>

using kits::SlideAt;

namespace {

/// 2009-08-04 00:00:00.
constexpr int64 kStart = 1249344000;

constexpr const char* kDay = R"xml(<?xml version="1.0"?>
<background>
  <starttime><year>2009</year><month>8</month><day>4</day><hour>0</hour><minute>0</minute><second>0</second></starttime>
  <!-- two slides and the way between them -->
  <static><duration>100.0</duration><file>/day.jpg</file></static>
  <transition type="overlay"><duration>50</duration><from>/day.jpg</from><to>/night.jpg</to></transition>
  <static><file><size width="8" height="5">/night.jpg</size><size width="16" height="9">/wide.jpg</size></file>
  <duration>50</duration></static>
</background>)xml";

std::string Background(const std::string& inner)
{
    return "<background>" + inner + "</background>";
}

} // namespace

TEST(Slideshow, ShowsOnePictureAfterTheOther)
{
    EXPECT_EQ(SlideAt(kDay, kStart), "/day.jpg");
    EXPECT_EQ(SlideAt(kDay, kStart + 99), "/day.jpg");
    EXPECT_EQ(SlideAt(kDay, kStart + 124), "/day.jpg");
    EXPECT_EQ(SlideAt(kDay, kStart + 126), "/night.jpg");
    EXPECT_EQ(SlideAt(kDay, kStart + 160), "/night.jpg");
}

TEST(Slideshow, BeginsAnewAndBeforeItsStart)
{
    EXPECT_EQ(SlideAt(kDay, kStart + 200), "/day.jpg");
    EXPECT_EQ(SlideAt(kDay, kStart + 200 * 12345 + 160), "/night.jpg");
    EXPECT_EQ(SlideAt(kDay, kStart - 1), "/night.jpg");
    EXPECT_EQ(SlideAt(kDay, kStart - 200), "/day.jpg");
}

TEST(Slideshow, OfOnePictureNeedsNoStart)
{
    const std::string text =
        Background("<static><duration>8640000.0</duration><file>\n<size width='1' height='1'>/a b.svg</size>"
                   "<size width='2' height='2'>/c.svg</size></file></static>");
    EXPECT_EQ(SlideAt(text, 0), "/a b.svg");
    EXPECT_EQ(SlideAt(text, 4102444800), "/a b.svg");
}

TEST(Slideshow, IsNoneWithoutASlide)
{
    for (const char* text :
         {"", "no slideshow", "<svg/>", "<background/>", "<background><static><file>/a</file></static>"})
        EXPECT_EQ(SlideAt(text, kStart), "") << text;
    for (const char* duration : {"0", "-5", "nan", "inf", "1e999", "", "five"}) {
        const std::string slide = std::string("<static><duration>") + duration + "</duration><file>/a</file></static>";
        EXPECT_EQ(SlideAt(Background(slide), kStart), "") << duration;
    }
    EXPECT_EQ(SlideAt(Background("<static><duration>5</duration><file>a.jpg</file></static>"), kStart), "");
    const std::string endless = "<static><duration>1e308</duration><file>/a</file></static>";
    EXPECT_EQ(SlideAt(Background(endless + endless), kStart), "");
}

TEST(Slideshow, ThatBreaksOffShowsWhatItHas)
{
    const std::string text = kDay;
    for (size_t size = 0; size < text.size(); size++) {
        const std::string shown = SlideAt(text.substr(0, size), kStart);
        EXPECT_TRUE(shown.empty() || shown == "/day.jpg") << size;
    }
}
