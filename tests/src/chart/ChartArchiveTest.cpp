// SPDX-License-Identifier: MIT
#include "kits/support/TypeConstants.h"
#include "src/chart/ChartSettings.h"
#include "src/chart/ChartView.h"
#include "tests/src/chart/ChartTestKit.h"
#include "tests/support/ReplaceValue.h"

#include <cmath>
#include <limits>

// What a chart writes, and what it accepts from an archive.

namespace {

BMessage Settings(const ChartView& chart)
{
    BMessage settings;
    EXPECT_EQ(chart.SavePrefsTo(&settings), B_OK);
    return settings;
}

rgb_color StoredColor(const BMessage& message, const char* key, int32 index = 0)
{
    const void* bytes = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(message.FindData(key, B_RAW_TYPE, &bytes, &size, index), B_OK) << key;
    EXPECT_EQ(size, 4);
    const auto* channels = static_cast<const uint8*>(bytes);
    return {channels[0], channels[1], channels[2], channels[3]};
}

// Returns a chart in which every setting differs from its default.
std::unique_ptr<ChartView> UnusualChart()
{
    auto chart = std::make_unique<ChartView>();
    chart->SetTitle("Something else");
    for (int32 i = 0; i < kMaxSources; i++)
        chart->SetChartColor({static_cast<uint8>(10 * i), 1, 2, 3}, i);
    chart->SetBackgroundColor({1, 2, 3, 4});
    chart->SetValueColor({5, 6, 7, 8});
    chart->SetTitleColor({9, 10, 11, 12});
    chart->SetBorderColor({13, 14, 15, 16});
    chart->SetValueAATarget(kAATargetChart);
    chart->SetTitleAATarget(kAATargetBackground);
    chart->SetValueAAValue(0.5f);
    chart->SetTitleAAValue(0.75f);
    chart->SetSkipValue(3);
    chart->SetValueSkipValue(4);
    chart->SetChartType(kPointChart);
    chart->SetPageSize(0.25f);
    chart->SetShowValue(false);
    chart->SetShowTitle(false);
    chart->SetShowBorder(true);
    chart->SetVertical(true);
    FFont font(be_plain_font);
    font.SetSize(11);
    chart->SetValueFont(&font);
    font.SetSize(12);
    chart->SetTitleFont(&font);
    AddSources(*chart, 5);
    BMessage smoothed = SourceArchive(VP_ALL_CPUS, VP_EXP_AVERAGE);
    chart->AddValueProvider(&smoothed, 1);
    return chart;
}

} // namespace

TEST(ChartArchiveTest, ANewChartHasItsDefaults)
{
    ChartView chart;
    EXPECT_EQ(chart.Bounds(), BRect(0, 0, 100, 30));
    EXPECT_STREQ(chart.Name(), "ChartView");
    EXPECT_STREQ(chart.Title(), "Def. title; d&d a source to the title");
    EXPECT_EQ(chart.CountValueProviders(), 0);
    ASSERT_NE(chart.ValueVP(), nullptr);
    EXPECT_EQ(chart.ValueVP()->Target(), VP_FIRST_CPU);
    EXPECT_EQ(chart.ValueVP()->Flags(), 0);
    EXPECT_EQ(chart.Settings().mode, kChartMode);
    EXPECT_EQ(chart.Settings().chartType, kSolidChart);
    EXPECT_EQ(chart.Settings().pageSize, 0.75f);
    EXPECT_EQ(chart.Picture().Column(), 0);
    EXPECT_EQ(chart.Settings().skip, 0);
    EXPECT_EQ(chart.Settings().valueSkip, 0);
    EXPECT_TRUE(chart.Settings().value.shown);
    EXPECT_TRUE(chart.Settings().title.shown);
    EXPECT_FALSE(chart.Settings().showBorder);
    EXPECT_FALSE(chart.Settings().lockBgColor);
    EXPECT_FALSE(chart.Settings().transparent);
    EXPECT_FALSE(chart.Settings().vertical);
    EXPECT_FALSE(chart.IsPaused());
    EXPECT_FALSE(chart.IsReplicant());
    EXPECT_EQ(chart.Owner(), nullptr);
    EXPECT_EQ(chart.Settings().value.aaTarget, kAATargetAverage);
    EXPECT_EQ(chart.Settings().title.aaTarget, kAATargetAverage);
    EXPECT_EQ(chart.Settings().value.aaValue, 0.25f);
    EXPECT_EQ(chart.Settings().title.aaValue, 0.25f);
    EXPECT_EQ(chart.Settings().value.font.Size(), 15);
    EXPECT_EQ(chart.Settings().title.font.Size(), 15);
    EXPECT_STREQ(chart.Captions().ValueText(), "");
    EXPECT_EQ(chart.Captions().Value().drawn, BRect(1, 1, 0, 0));
    EXPECT_EQ(chart.Captions().Title().drawn, BRect(1, 1, 0, 0));
}

TEST(ChartArchiveTest, DefaultColours)
{
    ChartView chart;
    EXPECT_EQ(chart.ChartColor(0), (rgb_color{100, 100, 220, 0}));
    EXPECT_EQ(chart.ChartColor(1), (rgb_color{108, 108, 228, 255}));
    EXPECT_EQ(chart.ChartColor(4), (rgb_color{132, 132, 252, 255}));
    EXPECT_EQ(chart.ChartColor(5), (rgb_color{140, 140, 4, 255}));
    EXPECT_EQ(chart.ChartColor(7), (rgb_color{156, 156, 20, 255}));
    EXPECT_EQ(chart.Settings().backgroundColor, (rgb_color{0, 0, 0, 0}));
    EXPECT_EQ(chart.Picture().LowColor(), (rgb_color{0, 0, 0, 0}));
    EXPECT_EQ(chart.Settings().value.color, (rgb_color{216, 216, 216, 0}));
    EXPECT_EQ(chart.Settings().title.color, (rgb_color{216, 216, 216, 0}));
    EXPECT_EQ(chart.Settings().borderColor, (rgb_color{255, 255, 255, 0}));
}

TEST(ChartArchiveTest, DefaultCaptionsStandAtTheTop)
{
    ChartView chart;
    font_height height;
    chart.Settings().value.font.GetHeight(&height);
    EXPECT_EQ(chart.Settings().value.where, BPoint(50, height.ascent + height.descent));
    EXPECT_EQ(chart.Settings().title.where, BPoint(0, height.ascent + height.descent));
}

TEST(ChartArchiveTest, EverySettingComesBack)
{
    const std::unique_ptr<ChartView> chart = UnusualChart();
    const BMessage settings = Settings(*chart);
    BMessage archive;
    ASSERT_EQ(chart->Archive(&archive, false), B_OK);
    ChartView copy(&archive);
    EXPECT_TRUE(Settings(copy).HasSameData(settings));
    EXPECT_EQ(copy.CountValueProviders(), 6);
    EXPECT_EQ(copy.ValueProviderAt(1)->Target(), VP_ALL_CPUS);
    EXPECT_EQ(copy.ValueProviderAt(1)->Flags(), VP_EXP_AVERAGE);
}

TEST(ChartArchiveTest, GaugeTransparencyAndLockComeBack)
{
    ChartView chart;
    chart.SetLockBgColor(true);
    chart.SetMode(kGaugeMode);
    BMessage settings = Settings(chart);
    ChartView locked(&settings);
    EXPECT_TRUE(locked.Settings().lockBgColor);
    EXPECT_EQ(locked.Settings().mode, kGaugeMode);
    EXPECT_EQ(locked.Picture().Bitmap(), nullptr);

    ChartView other;
    other.SetTransparent(true);
    settings = Settings(other);
    ChartView transparent(&settings);
    EXPECT_TRUE(transparent.Settings().transparent);
    EXPECT_EQ(transparent.Picture().LowColor(), B_TRANSPARENT_COLOR);
}

TEST(ChartArchiveTest, FieldsHaveTheTypesThatOlderVersionsRead)
{
    const std::unique_ptr<ChartView> chart = UnusualChart();
    const BMessage settings = Settings(*chart);
    struct Field {
        const char* key;
        type_code type;
        int32 count;
    };
    const Field fields[] = {{"ValueAATarget", B_INT16_TYPE, 1},
                            {"TitleAATarget", B_INT16_TYPE, 1},
                            {"ValueAAValue", B_FLOAT_TYPE, 1},
                            {"TitleAAValue", B_FLOAT_TYPE, 1},
                            {"ChartColor", B_RAW_TYPE, 8},
                            {"BackgroundColor", B_RAW_TYPE, 1},
                            {"ValueColor", B_RAW_TYPE, 1},
                            {"TitleColor", B_RAW_TYPE, 1},
                            {"BorderColor", B_RAW_TYPE, 1},
                            {"SkipValue", B_INT16_TYPE, 1},
                            {"ValueSkipValue", B_INT16_TYPE, 1},
                            {"ChartType", B_INT16_TYPE, 1},
                            {"PageSize", B_FLOAT_TYPE, 1},
                            {"ShowValue", B_BOOL_TYPE, 1},
                            {"ShowTitle", B_BOOL_TYPE, 1},
                            {"ShowBorder", B_BOOL_TYPE, 1},
                            {"ValueCoord", B_POINT_TYPE, 1},
                            {"TitleCoord", B_POINT_TYPE, 1},
                            {"PrefsWindowArchive", B_MESSAGE_TYPE, 1},
                            {"LockBgColor", B_BOOL_TYPE, 1},
                            {"Title", B_STRING_TYPE, 1},
                            {"Mode", B_INT16_TYPE, 1},
                            {"Transparent", B_BOOL_TYPE, 1},
                            {"Vertical", B_BOOL_TYPE, 1},
                            {"ValueFont", 'FONt', 1},
                            {"TitleFont", 'FONt', 1},
                            {"ValueVP", B_MESSAGE_TYPE, 1},
                            {"ValueProviders", B_MESSAGE_TYPE, 6}};
    for (const Field& field : fields) {
        type_code type = 0;
        int32 count = 0;
        EXPECT_EQ(settings.GetInfo(field.key, &type, &count), B_OK) << field.key;
        EXPECT_EQ(type, field.type) << field.key;
        EXPECT_EQ(count, field.count) << field.key;
    }
    EXPECT_EQ(settings.CountNames(B_ANY_TYPE), static_cast<int32>(std::size(fields)));
    EXPECT_EQ(StoredColor(settings, "ChartColor", 3), chart->ChartColor(3));
    EXPECT_EQ(StoredColor(settings, "BorderColor"), chart->Settings().borderColor);
}

TEST(ChartArchiveTest, EachGroupWritesItsOwnFields)
{
    ChartView chart;
    BMessage colors;
    chart.SaveColorPrefsTo(&colors);
    EXPECT_EQ(colors.CountNames(B_ANY_TYPE), 9);
    EXPECT_FALSE(colors.HasData("Title", B_STRING_TYPE));
    BMessage general;
    chart.SaveGeneralPrefsTo(&general);
    EXPECT_EQ(general.CountNames(B_ANY_TYPE), 17);
    BMessage sources;
    chart.SaveProviderPrefsTo(&sources);
    EXPECT_EQ(sources.CountNames(B_ANY_TYPE), 1);
}

TEST(ChartArchiveTest, AFieldThatCannotBeAddedIsReported)
{
    ChartView chart;
    BMessage taken;
    taken.AddString("Title", "x");
    taken.AddString("Mode", "of another type");
    EXPECT_NE(chart.SaveGeneralPrefsTo(&taken), B_OK);
    BMessage untouched;
    untouched.AddInt32("ValueProviders", 1);
    AddSources(chart, 2);
    EXPECT_EQ(chart.SaveProviderPrefsTo(&untouched), B_BAD_TYPE);
}

TEST(ChartArchiveTest, AReplicantsArchiveNamesItsClassAndProgram)
{
    ChartView chart;
    BMessage archive;
    ASSERT_EQ(chart.Archive(&archive, true), B_OK);
    const char* text = nullptr;
    ASSERT_EQ(archive.FindString("add_on", &text), B_OK);
    EXPECT_STREQ(text, "application/x-vnd.kvt-Qel");
    bool named = false;
    for (int32 i = 0; archive.FindString("class", &text, i) == B_OK; i++)
        named = named || std::string(text) == "ChartView";
    EXPECT_TRUE(named);
    EXPECT_FALSE(archive.HasData("_views", B_MESSAGE_TYPE));

    const std::unique_ptr<ChartView> copy(ChartView::Instantiate(&archive));
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->IsReplicant());
}

TEST(ChartArchiveTest, OtherArchivesGiveNoReplicant)
{
    BMessage archive;
    EXPECT_EQ(ChartView::Instantiate(&archive), nullptr);
    archive.AddString("class", "BView");
    EXPECT_EQ(ChartView::Instantiate(&archive), nullptr);
    EXPECT_EQ(ChartView::Instantiate(nullptr), nullptr);
}

TEST(ChartArchiveTest, AnArchiveWithATitleOnlyChangesTheTitleOnly)
{
    ChartView plain;
    BMessage expected = Settings(plain);
    test::ReplaceString(expected, "Title", "Only this");
    BMessage archive;
    archive.AddString("Title", "Only this");
    ChartView chart(&archive);
    EXPECT_STREQ(chart.Title(), "Only this");
    BMessage settings = Settings(chart);
    // Such an archive has no size either: the captions keep their places at any size.
    EXPECT_TRUE(settings.HasSameData(expected));
}

TEST(ChartArchiveTest, AntialiasingOffIsNotLoaded)
{
    BMessage archive;
    archive.AddFloat("ValueAAValue", 0);
    archive.AddFloat("TitleAAValue", 0);
    archive.AddFloat("PageSize", 0);
    ChartView chart(&archive);
    EXPECT_EQ(chart.Settings().value.aaValue, 0.25f);
    EXPECT_EQ(chart.Settings().title.aaValue, 0.25f);
    EXPECT_EQ(chart.Settings().pageSize, 0.75f);
}

TEST(ChartArchiveTest, SkippingNothingIsLoaded)
{
    ChartView chart;
    chart.SetSkipValue(7);
    chart.SetValueSkipValue(8);
    BMessage archive;
    archive.AddInt16("SkipValue", 0);
    archive.AddInt16("ValueSkipValue", 0);
    chart.LoadPrefsFrom(&archive);
    EXPECT_EQ(chart.Settings().skip, 0);
    EXPECT_EQ(chart.Settings().valueSkip, 0);
}

TEST(ChartArchiveTest, WithoutSourcesTheChartKeepsItsOwn)
{
    ChartView chart;
    AddSources(chart, 2);
    BMessage archive;
    archive.AddString("Title", "x");
    chart.LoadPrefsFrom(&archive);
    EXPECT_EQ(chart.CountValueProviders(), 2);
}

TEST(ChartArchiveTest, SourcesReplaceThoseOfTheChartInOrder)
{
    ChartView chart;
    AddSources(chart, 3);
    BMessage archive;
    for (vptarget_t target : {VP_ALL_CPUS, VP_FREE_MEMORY}) {
        const BMessage source = SourceArchive(target);
        archive.AddMessage("ValueProviders", &source);
    }
    chart.LoadPrefsFrom(&archive);
    ASSERT_EQ(chart.CountValueProviders(), 2);
    EXPECT_EQ(chart.ValueProviderAt(0)->Target(), VP_ALL_CPUS);
    EXPECT_EQ(chart.ValueProviderAt(1)->Target(), VP_FREE_MEMORY);
}

TEST(ChartArchiveTest, ANinthSourceIsLeftOut)
{
    BMessage archive;
    for (int32 i = 0; i < 20; i++) {
        const BMessage source = SourceArchive(2 * i + 2);
        archive.AddMessage("ValueProviders", &source);
    }
    ChartView chart(&archive);
    ASSERT_EQ(chart.CountValueProviders(), 8);
    EXPECT_EQ(chart.ValueProviderAt(7)->Target(), 16);
    BMessage ninth = SourceArchive(VP_ALL_CPUS);
    chart.AddValueProvider(&ninth, 0);
    EXPECT_EQ(chart.CountValueProviders(), 8);
    EXPECT_EQ(chart.ValueProviderAt(0)->Target(), 2);
}

TEST(ChartArchiveTest, SourcesAreInsertedAndRemovedByIndex)
{
    ChartView chart;
    AddSources(chart, 2);
    BMessage archive = SourceArchive(VP_ALL_CPUS);
    chart.AddValueProvider(&archive, 100);
    ASSERT_EQ(chart.CountValueProviders(), 3);
    EXPECT_EQ(chart.ValueProviderAt(2)->Target(), VP_ALL_CPUS);
    archive = SourceArchive(VP_FREE_MEMORY);
    chart.AddValueProvider(&archive, 1);
    EXPECT_EQ(chart.ValueProviderAt(1)->Target(), VP_FREE_MEMORY);

    chart.RemoveValueProvider(5);
    chart.RemoveValueProvider(-7);
    EXPECT_EQ(chart.CountValueProviders(), 4);
    chart.RemoveValueProvider(1);
    EXPECT_EQ(chart.ValueProviderAt(1)->Target(), VP_ALLOCATED_TEAMS);
    chart.RemoveValueProvider(-1);
    EXPECT_EQ(chart.CountValueProviders(), 0);
    EXPECT_EQ(chart.ValueProviderAt(0), nullptr);
    EXPECT_EQ(chart.ValueProviderAt(-1), nullptr);
}

TEST(ChartArchiveTest, TheCaptionsSourceComesBackAlsoWhenThereIsNone)
{
    for (vptarget_t target : {VP_ALL_CPUS, VP_NONE}) {
        BMessage archive;
        const BMessage source = SourceArchive(target);
        archive.AddMessage("ValueVP", &source);
        ChartView chart(&archive);
        EXPECT_EQ(chart.ValueVP()->Target(), target);
    }
}

TEST(ChartArchiveTest, AChartWithABorderStartsInsideIt)
{
    BMessage archive;
    archive.AddBool("ShowBorder", true);
    ChartView chart(&archive);
    EXPECT_EQ(chart.Picture().Column(), 1);
}

TEST(ChartArchiveTest, ThePreferencesWindowsArchiveIsKeptAndForgotten)
{
    BMessage archive;
    BMessage window;
    window.AddRect("_frame", BRect(1, 2, 3, 4));
    archive.AddMessage("PrefsWindowArchive", &window);
    ChartView chart(&archive);
    BMessage stored;
    ASSERT_EQ(Settings(chart).FindMessage("PrefsWindowArchive", &stored), B_OK);
    EXPECT_TRUE(stored.HasSameData(window));

    BMessage empty;
    chart.LoadPrefsFrom(&empty);
    ASSERT_EQ(Settings(chart).FindMessage("PrefsWindowArchive", &stored), B_OK);
    EXPECT_TRUE(stored.IsEmpty());
}

TEST(ChartArchiveTest, ATitleIsCutAtACharacter)
{
    ChartView chart;
    chart.SetTitle("Processor", 4);
    EXPECT_STREQ(chart.Title(), "Proc");
    chart.SetTitle("short", 100);
    EXPECT_STREQ(chart.Title(), "short");
    std::string umlauts;
    for (int i = 0; i < 2000; i++)
        umlauts += "\xC3\xBC";
    chart.SetTitle(("x" + umlauts).c_str());
    EXPECT_EQ(std::string(chart.Title()), "x" + umlauts.substr(0, 1022));
    chart.SetTitle(nullptr);
    EXPECT_STREQ(chart.Title(), "");
}

TEST(ChartArchiveTest, WhatIsNoChartsArchiveChangesNothing)
{
    const std::unique_ptr<ChartView> chart = UnusualChart();
    const BMessage before = Settings(*chart);
    // Every key with a type that no version ever wrote there.
    BMessage wrong;
    for (const kits::AnyField* field = kits::AnyField::All(); field != nullptr; field = field->Next())
        wrong.AddDouble(field->Name(), 1);
    chart->LoadPrefsFrom(&wrong);
    EXPECT_TRUE(Settings(*chart).HasSameData(before));
    chart->LoadPrefsFrom(nullptr);
    EXPECT_TRUE(Settings(*chart).HasSameData(before));
}

TEST(ChartArchiveTest, ValuesOutOfRangeAreLeftOut)
{
    const std::unique_ptr<ChartView> chart = UnusualChart();
    const BMessage before = Settings(*chart);
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (int16 value : {int16(-1), int16(-32768), int16(51), int16(32767)}) {
        BMessage archive;
        for (const char* key : {"ValueAATarget", "TitleAATarget", "SkipValue", "ValueSkipValue", "ChartType", "Mode"})
            archive.AddInt16(key, value);
        chart->LoadPrefsFrom(&archive);
    }
    for (float value : {-1.0f, 1.1f, kInfinity, -kInfinity, std::nanf(""), 1e30f}) {
        BMessage archive;
        for (const char* key : {"ValueAAValue", "TitleAAValue", "PageSize"})
            archive.AddFloat(key, value);
        chart->LoadPrefsFrom(&archive);
    }
    for (float value : {-40000.0f, 40000.0f, kInfinity, std::nanf("")}) {
        BMessage archive;
        archive.AddPoint("ValueCoord", BPoint(value, 10));
        archive.AddPoint("TitleCoord", BPoint(10, value));
        chart->LoadPrefsFrom(&archive);
    }
    for (float size : {0.0f, -3.0f, 1.0f, 5000.0f}) {
        BMessage archive;
        BFont font;
        font.SetSize(size);
        AddMessageFont(&archive, "ValueFont", &font);
        AddMessageFont(&archive, "TitleFont", &font);
        ChartView fresh(&archive);
        EXPECT_GE(fresh.Settings().value.font.Size(), kMinFontSize);
        EXPECT_LE(fresh.Settings().value.font.Size(), kMaxFontSize);
        EXPECT_LE(fresh.Settings().title.font.Size(), kMaxFontSize);
    }
    BMessage colors;
    colors.AddData("BackgroundColor", B_RAW_TYPE, "abc", 3);
    colors.AddData("ValueColor", B_RAW_TYPE, "abcde", 5);
    chart->LoadPrefsFrom(&colors);
    EXPECT_TRUE(Settings(*chart).HasSameData(before));
}

TEST(ChartArchiveTest, SettersHoldTheSameRanges)
{
    ChartView chart;
    chart.SetPageSize(std::nanf(""));
    chart.SetPageSize(2);
    EXPECT_EQ(chart.Settings().pageSize, 0.75f);
    chart.SetSkipValue(-1);
    chart.SetSkipValue(51);
    EXPECT_EQ(chart.Settings().skip, 0);
    chart.SetValueSkipValue(-1);
    EXPECT_EQ(chart.Settings().valueSkip, 0);
    chart.SetChartType(0);
    chart.SetChartType(4);
    EXPECT_EQ(chart.Settings().chartType, kSolidChart);
    chart.SetMode(0);
    chart.SetMode(3);
    EXPECT_EQ(chart.Settings().mode, kChartMode);
    chart.SetValueAATarget(4);
    EXPECT_EQ(chart.Settings().value.aaTarget, kAATargetAverage);
    chart.SetValueAAValue(-0.5f);
    EXPECT_EQ(chart.Settings().value.aaValue, 0.25f);
    chart.SetChartColor({1, 2, 3, 4}, 8);
    chart.SetChartColor({1, 2, 3, 4}, -1);
    chart.SetValueFont(nullptr);
}

TEST(ChartArchiveTest, SourcesThatDoNotExistAreLeftOut)
{
    BMessage archive;
    for (vptarget_t target : {-1, 0, 2066, 1000000, int32(VP_ALL_CPUS)}) {
        BMessage source;
        source.AddInt32("Target", target);
        archive.AddMessage("ValueProviders", &source);
    }
    BMessage flagged;
    flagged.AddInt32("Target", VP_ALL_CPUS);
    flagged.AddInt32("Flags", 4);
    archive.AddMessage("ValueProviders", &flagged);
    BMessage caption;
    caption.AddInt32("Target", -5);
    archive.AddMessage("ValueVP", &caption);
    ChartView chart(&archive);
    ASSERT_EQ(chart.CountValueProviders(), 1);
    EXPECT_EQ(chart.ValueProviderAt(0)->Target(), VP_ALL_CPUS);
    EXPECT_EQ(chart.ValueVP()->Target(), VP_FIRST_CPU);
}

TEST(ChartArchiveTest, ASourceWithoutATargetIsTheFirstProcessor)
{
    BMessage archive;
    const BMessage source;
    archive.AddMessage("ValueProviders", &source);
    ChartView chart(&archive);
    ASSERT_EQ(chart.CountValueProviders(), 1);
    EXPECT_EQ(chart.ValueProviderAt(0)->Target(), VP_FIRST_CPU);
}

TEST(ChartArchiveTest, AFrameFromAFileCostsNoMoreThanAScreen)
{
    BMessage archive;
    archive.AddRect("_frame", BRect(0, 0, 32000, 32000));
    ChartView chart(&archive);
    EXPECT_EQ(chart.Picture().Bitmap(), nullptr);
    AddSources(chart, 1);
    Show(chart, {.memory = 500});
    chart.ResizeTo(10, 10);
    EXPECT_NE(chart.Picture().Bitmap(), nullptr);
}
