// SPDX-License-Identifier: MIT
#include "src/support/FieldRanges.h"

#include "kits/application/Messenger.h"
#include "src/app/MainWindow.h"
#include "src/app/Uptimes.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/prefs/PrefsWindow.h"
#include "src/prefs/store/Preferences.h"
#include "src/sampling/SampleRecords.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "tests/src/app/AppTest.h"
#include "tests/support/GuiTest.h"

#include <cmath>
#include <limits>

// Every field that anything reads, with everything that it must not be: put into every archive and every message, and
// looked for in what the program would store afterwards.

namespace {

/// Of the program's fields and of the kits'.
const kits::FieldRange* RangeOf(const char* key)
{
    const kits::FieldRange* const own = kFields.RangeOf(key);
    return own != nullptr ? own : kits::kKitFields.RangeOf(key);
}

bool IsInRange(const char* key, double value)
{
    return kFields.InRange(key, value) || kits::kKitFields.InRange(key, value);
}

const double kInfinity = std::numeric_limits<double>::infinity();

/// Numbers that hardly any field may have, and those beside its range.
std::vector<double> HostileNumbers(const kits::FieldRange& range)
{
    return {std::nan(""),   kInfinity, -kInfinity, 0,    -1,    1,      -0.0,   range.low - 1,
            range.high + 1, 32767,     -32768,     1e30, -1e30, 9.3e18, -9.3e18};
}

template <class Integer> Integer Whole(double number)
{
    constexpr double kLow = static_cast<double>(std::numeric_limits<Integer>::min());
    if (!(number > kLow))
        return std::numeric_limits<Integer>::min();
    return number >= -kLow ? std::numeric_limits<Integer>::max() : static_cast<Integer>(number);
}

void AddNumber(BMessage* message, const kits::FieldRange& range, double number)
{
    const auto single = static_cast<float>(std::clamp(number, -1e38, 1e38));
    const float bits = std::isfinite(number) ? single : static_cast<float>(number);
    switch (range.type) {
    case B_BOOL_TYPE:
        message->AddBool(range.key, number != 0);
        break;
    case B_INT16_TYPE:
        message->AddInt16(range.key, Whole<int16>(number));
        break;
    case B_INT32_TYPE:
        message->AddInt32(range.key, Whole<int32>(number));
        break;
    case B_INT64_TYPE:
        message->AddInt64(range.key, Whole<int64>(number));
        break;
    case B_FLOAT_TYPE:
        message->AddFloat(range.key, bits);
        break;
    case B_POINT_TYPE:
        message->AddPoint(range.key, BPoint(bits, 3));
        message->AddPoint(range.key, BPoint(3, bits));
        break;
    case B_RECT_TYPE:
        message->AddRect(range.key, BRect(0, 0, bits, 50));
        message->AddRect(range.key, BRect(bits, bits, bits, bits));
        break;
    case B_STRING_TYPE:
        message->AddString(range.key, std::string(static_cast<size_t>(std::min(range.high, 5000.0)) + 1, 'x').c_str());
        break;
    case B_MESSAGE_TYPE: {
        const BMessage empty;
        for (int32 i = 0; i < 9; i++)
            message->AddMessage(range.key, &empty);
        break;
    }
    default: {
        // Raw bytes of wrong sizes, all set: as a number they are not one, or -1.
        const std::string bytes(static_cast<size_t>(std::min(range.high, 1200.0)) + 3, '\xFF');
        for (int32 i = 0; i < 9; i++)
            message->AddData(range.key, range.type, bytes.data(), static_cast<ssize_t>(bytes.size()) - (i & 3), false);
    }
    }
}

/// Adds one wrong field to each of the messages, of each type; there are as many as it takes.
void AddHostile(const kits::FieldRange& range, std::vector<BMessage>* messages)
{
    size_t next = 0;
    const auto message = [&]() {
        if (next == messages->size())
            messages->emplace_back();
        return &(*messages)[next++];
    };
    for (const double number : HostileNumbers(range)) {
        AddNumber(message(), range, number);
        BMessage* const nine = message();
        for (int32 i = 0; i < 9; i++)
            AddNumber(nine, range, number);
    }
    for (const type_code type : {B_BOOL_TYPE, B_INT16_TYPE, B_INT32_TYPE, B_INT64_TYPE, B_FLOAT_TYPE, B_POINT_TYPE,
                                 B_RECT_TYPE, B_STRING_TYPE, B_MESSAGE_TYPE, B_RAW_TYPE}) {
        if (type == range.type)
            continue;
        const kits::FieldRange mistyped{range.key, type, range.low, range.high};
        AddNumber(message(), mistyped, 1);
        AddNumber(message(), mistyped, -1);
    }
}

/// Archives with one wrong field each.
std::vector<BMessage> HostileMessages(const kits::FieldRange& range)
{
    std::vector<BMessage> messages;
    AddHostile(range, &messages);
    return messages;
}

/// Every number of an archive, and of those in it, that the table knows is in its range.
void ExpectInRange(const BMessage& archive, const std::string& what)
{
    const char* key = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; archive.GetInfo(B_ANY_TYPE, i, &key, &type, &count) == B_OK; i++) {
        const kits::FieldRange* const range = RangeOf(key);
        if (type == B_MESSAGE_TYPE) {
            EXPECT_TRUE(range == nullptr || count <= range->high) << what << ", " << key;
            BMessage inner;
            for (int32 index = 0; archive.FindMessage(key, index, &inner) == B_OK; index++) {
                // The caption of a chart may have no source.
                if (std::string_view(key) != "ValueVP")
                    ExpectInRange(inner, what);
            }
            continue;
        }
        if (range == nullptr)
            continue;
        EXPECT_EQ(type, range->type) << what << ", " << key;
        int16 small = 0;
        int32 number = 0;
        int64 large = 0;
        float broken = 0;
        BPoint point;
        BRect rect;
        if (archive.FindInt16(key, &small) == B_OK)
            EXPECT_TRUE(IsInRange(key, small)) << what << ", " << key << ": " << small;
        if (archive.FindInt32(key, &number) == B_OK)
            EXPECT_TRUE(IsInRange(key, number)) << what << ", " << key << ": " << number;
        if (archive.FindInt64(key, &large) == B_OK)
            EXPECT_TRUE(IsInRange(key, static_cast<double>(large))) << what << ", " << key << ": " << large;
        if (archive.FindFloat(key, &broken) == B_OK)
            EXPECT_TRUE(IsInRange(key, static_cast<double>(broken))) << what << ", " << key << ": " << broken;
        if (archive.FindPoint(key, &point) == B_OK) {
            EXPECT_TRUE(IsInRange(key, static_cast<double>(point.x)) && IsInRange(key, static_cast<double>(point.y)))
                << what << ", " << key;
        }
        if (archive.FindRect(key, &rect) == B_OK) {
            EXPECT_TRUE(IsInRange(key, static_cast<double>(rect.Width())) &&
                        IsInRange(key, static_cast<double>(rect.Height())))
                << what << ", " << key;
        }
    }
}

/// What a chart takes from other programs and from the user, fonts too.
constexpr uint32 kChartCodes[] = {MSG_PREFS_DROP,
                                  MSG_SOURCE_DROP,
                                  MSG_SET_VALUE_POS,
                                  MSG_SET_TITLE_POS,
                                  MSG_SET_COLUMN,
                                  MSG_REMOVE_SOURCE,
                                  MSG_SYSINFO_SAMPLE,
                                  MSG_SERVER_GONE,
                                  MSG_WINDOW_CLOSED,
                                  B_SIMPLE_DATA,
                                  B_MIME_DATA,
                                  B_PASTE,
                                  '!FNT'};

void ToCharts(BMessage hostile, const std::string& what)
{
    ChartView chart;
    chart.LoadPrefsFrom(&hostile);
    for (const uint32 code : kChartCodes) {
        hostile.what = code;
        chart.MessageReceived(&hostile);
    }
    BMessage settings;
    EXPECT_EQ(chart.SavePrefsTo(&settings), B_OK);
    ExpectInRange(settings, "a chart with " + what);

    ChartView archived(&hostile);
    settings.MakeEmpty();
    archived.Archive(&settings, true);
    ExpectInRange(settings, "a chart made of " + what);

    ChartViewHolder holder(&hostile);
    settings.MakeEmpty();
    holder.Archive(&settings, true);
    ExpectInRange(settings, "a holder made of " + what);

    const ValueProvider source(&hostile);
    BMessage sources;
    sources.AddMessage("ValueProviders", &hostile);
    ChartView withSource(&sources);
    settings.MakeEmpty();
    withSource.SavePrefsTo(&settings);
    ExpectInRange(settings, "a chart with a source of " + what);
}

void ToSampler(const BMessage& hostile, const std::string& what)
{
    Sysinfo sampler(10);
    sampler.LoadPrefsFrom(&hostile);
    BMessage settings;
    EXPECT_EQ(sampler.SavePrefsTo(&settings), B_OK);
    ExpectInRange(settings, "the sampler with " + what);

    const Sysinfo ghost(&hostile);
    const SysinfoNode node(&hostile);
    EXPECT_EQ(ghost.InitCheck() == B_OK && node.InitCheck() == B_OK, false) << what;
}

void ToUptimes(const BMessage& hostile, const std::string& what)
{
    UptimeTotals totals = UptimeTotals::From(hostile);
    totals.Count(5000000, 1700000000000000);
    BMessage record;
    record.AddInt32("BootCount", totals.bootCount);
    record.AddInt64("UptimeSum", totals.sum);
    record.AddInt64("USLastBoot", totals.lastBoot);
    record.AddInt64("USLastUptime", totals.lastUptime);
    ExpectInRange(record, "uptimes with " + what);
    const void* data = nullptr;
    ssize_t size = 0;
    if (hostile.FindData("Uptimes", B_RAW_TYPE, &data, &size) == B_OK) {
        UptimeTable table;
        table.SetTo(data, static_cast<size_t>(size));
        for (size_t place = 0; place < UptimeTable::kPlaces; place++) {
            const UptimeEntry& entry = table.At(place);
            EXPECT_TRUE(entry.uptime >= 0 && entry.uptime <= kLongestUptime && entry.bootTime >= 0) << what;
        }
    }
}

} // namespace

class FieldRangesTest : public AppTest {};

TEST_F(FieldRangesTest, ChartsSamplerAndUptimesStayInRangeWhateverTheyAreGiven)
{
    for (const kits::FieldRange& range : kFields) {
        for (const BMessage& hostile : HostileMessages(range)) {
            const std::string what = "a wrong " + std::string(range.key);
            ToCharts(hostile, what);
            ToUptimes(hostile, what);
        }
        // A sampler has a thread of its own, so not for every one.
        ToSampler(HostileMessages(range).front(), range.key);
    }
    for (const char* key : {"Delay", "NodesToKeep"})
        for (const BMessage& hostile : HostileMessages(*kFields.RangeOf(key)))
            ToSampler(hostile, key);
}

TEST_F(FieldRangesTest, WindowsStayInRangeWhateverTheyAreGiven)
{
    // A window takes its time, so all fields are wrong at once.
    std::vector<BMessage> archives;
    for (const kits::FieldRange& range : kits::kKitFields)
        AddHostile(range, &archives);
    for (const char* key : {"WindowFrame", "WindowFrameWithCharts", "Selection", "sw:flags", "ChartViewHolder"})
        AddHostile(*kFields.RangeOf(key), &archives);
    const auto check = [](BMessage hostile) {
        SmartWindow* slot = nullptr;
        slot = new MainWindow(&hostile, &slot);
        BMessage settings;
        EXPECT_EQ(slot->Archive(&settings, false), B_OK);
        ExpectInRange(settings, "a main window");
        slot->Lock();
        slot->Quit();
        slot = new PrefsWindow(&hostile, "Test", nullptr, &slot);
        settings.MakeEmpty();
        EXPECT_EQ(slot->Archive(&settings, false), B_OK);
        ExpectInRange(settings, "a preferences window");
        const BRect frame = slot->Frame();
        EXPECT_TRUE(std::abs(frame.left) <= 32767 && frame.Width() >= 0 && frame.Width() <= 32767);
        slot->Lock();
        slot->Quit();
        test::Turn();
    };
    Run({[&](QelApp&) {
        for (size_t i = 0; i < archives.size(); i++) {
            SCOPED_TRACE(i);
            check(archives[i]);
        }
    }});
    Finish();
}

TEST_F(FieldRangesTest, TheApplicationStaysInRangeWhateverItIsSent)
{
    Make();
    Run({[](QelApp& app) {
             for (const kits::FieldRange& range : kFields) {
                 for (BMessage hostile : HostileMessages(range)) {
                     for (const uint32 code : {MSG_SET_DELAY, MSG_SET_NODES_TO_KEEP, MSG_CONNECT, MSG_DISCONNECT,
                                               MSG_WINDOW_CLOSED, MSG_NO_LISTENERS}) {
                         hostile.what = code;
                         app.MessageReceived(&hostile);
                     }
                     ASSERT_TRUE(InRange("Delay", static_cast<double>(app.Sampler()->SamplingDelay()))) << range.key;
                     ASSERT_TRUE(InRange("NodesToKeep", app.Sampler()->NodesToKeep())) << range.key;
                 }
             }
         },
         [](QelApp& app) {
             const std::vector<std::pair<int64, int64>> delays{
                 {0, 10000}, {-1, 10000}, {INT64_MIN, 10000}, {INT64_MAX, 5000000}, {30000, 30000}};
             for (const auto& [asked, got] : delays) {
                 BMessage message(MSG_SET_DELAY);
                 message.AddInt64("Delay", asked);
                 app.MessageReceived(&message);
                 EXPECT_EQ(app.Sampler()->SamplingDelay(), got) << asked;
             }
             const std::vector<std::pair<int16, int16>> lengths{{10, 10}, {0, 10}, {1, 10},
                                                                {-1, 10}, {2, 2},  {32767, 200}};
             for (const auto& [asked, got] : lengths) {
                 BMessage message(MSG_SET_NODES_TO_KEEP);
                 message.AddInt16("NodesToKeep", asked);
                 app.MessageReceived(&message);
                 EXPECT_EQ(app.Sampler()->NodesToKeep(), got) << asked;
             }
         }});
    Finish();
}

TEST_F(FieldRangesTest, StoredHistoryLengthsAreHeldToTheRange)
{
    const std::vector<std::pair<int16, int16>> lengths{{0, 10}, {1, 1}, {-1, 10}, {32767, 200}, {2, 2}};
    for (const auto& [stored, kept] : lengths) {
        BMessage settings;
        settings.AddInt16("NodesToKeep", stored);
        Sysinfo sampler(10);
        sampler.LoadPrefsFrom(&settings);
        EXPECT_EQ(sampler.NodesToKeep(), kept) << stored;
    }
}
