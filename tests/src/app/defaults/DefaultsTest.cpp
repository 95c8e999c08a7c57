// SPDX-License-Identifier: MIT
#include "src/app/Defaults.h"

#include "kits/application/Message.h"
#include "kits/storage/Resources.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "src/sampling/ValueProvider.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace {

using Sources = std::vector<std::pair<vptarget_t, int32>>;

/// Returns the resource that is linked into the program.
BMessage Resource()
{
    size_t size = 0;
    const void* const bytes = BResources().LoadResource(B_ANY_TYPE, "Defaults", &size);
    BMessage defaults;
    EXPECT_NE(bytes, nullptr);
    EXPECT_EQ(defaults.Unflatten(static_cast<const char*>(bytes), static_cast<ssize_t>(size)), B_OK);
    return defaults;
}

BMessage Window(const BMessage& defaults)
{
    BMessage window;
    EXPECT_EQ(defaults.FindMessage("MainWindow", &window), B_OK);
    return window;
}

std::vector<BMessage> Charts(const BMessage& defaults)
{
    BMessage holder;
    EXPECT_EQ(Window(defaults).FindMessage("ChartViewHolder", &holder), B_OK);
    std::vector<BMessage> charts;
    BMessage chart;
    while (holder.FindMessage("Chart", &chart, static_cast<int32>(charts.size())) == B_OK)
        charts.push_back(chart);
    return charts;
}

Sources SourcesOf(const BMessage& chart)
{
    Sources sources;
    BMessage source;
    while (chart.FindMessage("ValueProviders", &source, static_cast<int32>(sources.size())) == B_OK) {
        const ValueProvider provider(&source);
        sources.emplace_back(provider.Target(), provider.Flags());
    }
    return sources;
}

/// Returns the resource as a machine with that many processors shows it.
BMessage On(int32 cpuCount)
{
    BMessage defaults = Resource();
    AdaptDefaultsToMachine(&defaults, cpuCount);
    return defaults;
}

/// Returns the loads of the first processors.
Sources Processors(int32 count)
{
    Sources sources;
    for (int32 processor = 0; processor < count; ++processor)
        sources.emplace_back(VP_FIRST_CPU + 2 * processor, 0);
    return sources;
}

/// Returns how bright a colour looks, from 0 to 1.
double Brightness(const uint8* color)
{
    const auto channel = [](uint8 value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(color[0]) + 0.7152 * channel(color[1]) + 0.0722 * channel(color[2]);
}

double Contrast(const uint8* one, const uint8* other)
{
    const auto [dark, bright] = std::minmax({Brightness(one), Brightness(other)});
    return (bright + 0.05) / (dark + 0.05);
}

const uint8* ColorIn(const BMessage& chart, const char* name, int32 index = 0)
{
    const void* color = nullptr;
    ssize_t size = 0;
    return chart.FindData(name, B_RAW_TYPE, &color, &size, index) == B_OK && size == 4
               ? static_cast<const uint8*>(color)
               : nullptr;
}

} // namespace

TEST(Defaults, ThreeChartsThatShowSomethingAtOnce)
{
    const std::vector<BMessage> charts = Charts(Resource());
    ASSERT_EQ(charts.size(), 3u);
    EXPECT_EQ(SourcesOf(charts[0]), (Sources{{VP_ALL_CPUS, 0}}));
    EXPECT_EQ(SourcesOf(charts[1]), (Sources{{VP_USED_MEMORY, 0}}));
    EXPECT_EQ(SourcesOf(charts[2]), Processors(8));
    for (const BMessage& chart : charts) {
        std::string title;
        EXPECT_EQ(chart.FindString("Title", &title), B_OK);
        EXPECT_FALSE(title.empty());
        bool showsValue = false;
        EXPECT_EQ(chart.FindBool("ShowValue", &showsValue), B_OK);
        EXPECT_TRUE(showsValue);
        EXPECT_TRUE(chart.HasData("ValueVP", B_MESSAGE_TYPE));
        int16 number = 0;
        EXPECT_EQ(chart.FindInt16("ChartType", &number), B_OK);
        EXPECT_EQ(number, 1) << "solid";
        EXPECT_EQ(chart.FindInt16("Mode", &number), B_OK);
        EXPECT_EQ(number, 1) << "a chart";
    }
}

TEST(Defaults, TheWindowShowsTheCharts)
{
    const BMessage window = Window(Resource());
    int32 selection = 0;
    EXPECT_EQ(window.FindInt32("Selection", &selection), B_OK);
    EXPECT_EQ(selection, 1);
    std::string title;
    EXPECT_EQ(window.FindString("_title", &title), B_OK);
    EXPECT_EQ(title, "Qel");
    for (const char* const name : {"_frame", "WindowFrame", "WindowFrameWithCharts"}) {
        BRect frame;
        ASSERT_EQ(window.FindRect(name, &frame), B_OK) << name;
        EXPECT_GE(frame.Width(), 300) << name;
        EXPECT_GE(frame.Height(), 200) << name;
        EXPECT_LE(frame.right, 1000) << name << " fits the smallest screens";
        EXPECT_LE(frame.bottom, 700) << name;
    }
}

TEST(Defaults, EveryColourStandsOutFromItsBackground)
{
    for (const BMessage& chart : Charts(Resource())) {
        const uint8* const background = ColorIn(chart, "BackgroundColor");
        ASSERT_NE(background, nullptr);
        for (int32 index = 0; index < 8; ++index) {
            const uint8* const color = ColorIn(chart, "ChartColor", index);
            ASSERT_NE(color, nullptr) << index;
            EXPECT_GE(Contrast(color, background), 3.0) << index;
        }
        for (const char* const text : {"TitleColor", "ValueColor"}) {
            ASSERT_NE(ColorIn(chart, text), nullptr);
            EXPECT_GE(Contrast(ColorIn(chart, text), background), 7.0) << text;
        }
    }
}

TEST(Defaults, ProcessorsThatTheMachineLacksAreLeftOut)
{
    for (int32 cpuCount = 1; cpuCount <= 8; ++cpuCount) {
        const std::vector<BMessage> charts = Charts(On(cpuCount));
        ASSERT_EQ(charts.size(), 3u);
        EXPECT_EQ(SourcesOf(charts[0]), (Sources{{VP_ALL_CPUS, 0}}));
        EXPECT_EQ(SourcesOf(charts[1]), (Sources{{VP_USED_MEMORY, 0}}));
        EXPECT_EQ(SourcesOf(charts[2]), Processors(cpuCount));
    }
    EXPECT_TRUE(On(8).HasSameData(Resource()));
}

TEST(Defaults, MoreThanEightProcessorsAreShownTogether)
{
    for (const int32 cpuCount : {9, 64, 256, 1024}) {
        const std::vector<BMessage> charts = Charts(On(cpuCount));
        ASSERT_EQ(charts.size(), 3u);
        EXPECT_EQ(SourcesOf(charts[0]), (Sources{{VP_ALL_CPUS, 0}}));
        EXPECT_EQ(SourcesOf(charts[1]), (Sources{{VP_USED_MEMORY, 0}}));
        EXPECT_EQ(SourcesOf(charts[2]), (Sources{{VP_ALL_CPUS, 0}, {VP_ALL_CPUS, VP_AVERAGE}}));
    }
}

TEST(Defaults, IdleSourcesAndOtherFieldsAreTreatedAlike)
{
    BMessage idle;
    ValueProvider(VP_FIRST_CPU_IDLE + 2 * 3, VP_AVERAGE).Archive(&idle);
    BMessage memory;
    ValueProvider(VP_USED_MEMORY, 0).Archive(&memory);
    BMessage chart;
    chart.AddMessage("ValueProviders", &idle);
    chart.AddMessage("ValueProviders", &memory);
    chart.AddString("Title", "Mixed");
    BMessage holder;
    holder.AddMessage("Chart", &chart);
    BMessage window;
    window.AddMessage("ChartViewHolder", &holder);
    window.AddInt32("Selection", 1);
    BMessage defaults;
    defaults.AddMessage("MainWindow", &window);
    defaults.AddBool("CWOpen", true);

    BMessage many = defaults;
    AdaptDefaultsToMachine(&many, 64);
    EXPECT_TRUE(many.HasSameData(defaults)) << "it shows more than single processors";
    BMessage few = defaults;
    AdaptDefaultsToMachine(&few, 3);
    EXPECT_EQ(SourcesOf(Charts(few)[0]), (Sources{{VP_USED_MEMORY, 0}}));
    std::string title;
    EXPECT_EQ(Charts(few)[0].FindString("Title", &title), B_OK);
    EXPECT_EQ(title, "Mixed");
    EXPECT_TRUE(few.HasData("CWOpen", B_BOOL_TYPE));
}

TEST(Defaults, WhatHasAnotherFormStays)
{
    BMessage empty;
    AdaptDefaultsToMachine(&empty, 2);
    EXPECT_TRUE(empty.IsEmpty());
    BMessage strange;
    strange.AddString("MainWindow", "not a message");
    BMessage copy = strange;
    AdaptDefaultsToMachine(&strange, 2);
    EXPECT_TRUE(strange.HasSameData(copy));

    // A chart without sources shows no processors.
    BMessage chart;
    BMessage holder;
    holder.AddMessage("Chart", &chart);
    BMessage window;
    window.AddMessage("ChartViewHolder", &holder);
    BMessage defaults;
    defaults.AddMessage("MainWindow", &window);
    AdaptDefaultsToMachine(&defaults, 64);
    EXPECT_EQ(SourcesOf(Charts(defaults)[0]), Sources{});
}
