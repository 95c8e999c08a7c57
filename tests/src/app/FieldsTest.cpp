// SPDX-License-Identifier: MIT
#include "kits/application/Field.h"
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
#include "src/support/Qel.h"
#include "tests/src/app/AppTest.h"
#include "tests/src/app/AppWindows.h"
#include "tests/support/DeclaredField.h"
#include "tests/support/FieldAt.h"
#include "tests/support/GuiTest.h"

#include <cmath>
#include <limits>
#include <map>

// Gives every declared field everything that it must not accept: reads it through its declaration, puts it into every
// archive and every message, and checks what the program would store afterwards.

namespace {

using kits::AnyField;

std::vector<const AnyField*> AllFields()
{
    std::vector<const AnyField*> all;
    for (const AnyField* field = AnyField::All(); field != nullptr; field = field->Next())
        all.push_back(field);
    return all;
}

const double kInfinity = std::numeric_limits<double>::infinity();

/// Returns numbers that hardly any field accepts, and those next to its range.
std::vector<double> HostileNumbers(const AnyField& field)
{
    return {std::nan(""),     kInfinity, -kInfinity, 0,    -1,    1,      -0.0,   field.Low() - 1,
            field.High() + 1, 32767,     -32768,     1e30, -1e30, 9.3e18, -9.3e18};
}

template <class Integer> Integer Whole(double number)
{
    constexpr double kLow = static_cast<double>(std::numeric_limits<Integer>::min());
    if (!(number > kLow))
        return std::numeric_limits<Integer>::min();
    return number >= -kLow ? std::numeric_limits<Integer>::max() : static_cast<Integer>(number);
}

/// Adds values of every type under the name of a field, each as close to the number as its type allows.
void AddNumber(BMessage* message, const AnyField& field, type_code type, double number)
{
    const char* const name = field.Name();
    const auto single = static_cast<float>(std::clamp(number, -1e38, 1e38));
    const float bits = std::isfinite(number) ? single : static_cast<float>(number);
    switch (type) {
    case B_BOOL_TYPE:
        message->AddBool(name, number != 0);
        break;
    case B_INT16_TYPE:
        message->AddInt16(name, Whole<int16>(number));
        break;
    case B_INT32_TYPE:
        message->AddInt32(name, Whole<int32>(number));
        break;
    case B_INT64_TYPE:
        message->AddInt64(name, Whole<int64>(number));
        break;
    case B_FLOAT_TYPE:
        message->AddFloat(name, bits);
        break;
    case B_POINT_TYPE:
        message->AddPoint(name, BPoint(bits, 3));
        message->AddPoint(name, BPoint(3, bits));
        break;
    case B_RECT_TYPE:
        message->AddRect(name, BRect(0, 0, bits, 50));
        message->AddRect(name, BRect(bits, bits, bits, bits));
        break;
    case B_STRING_TYPE:
        message->AddString(name, std::string(static_cast<size_t>(std::min(field.High(), 5000.0)) + 1, 'x'));
        break;
    case B_MESSAGE_TYPE: {
        const BMessage empty;
        for (int32 i = 0; i < 9; i++)
            message->AddMessage(name, &empty);
        break;
    }
    default: {
        // Bytes of wrong sizes, all set: as a number they are NaN or -1.
        const std::string bytes(static_cast<size_t>(std::min(field.High(), 1200.0)) + 3, '\xFF');
        for (int32 i = 0; i < 9; i++)
            message->AddData(name, type, bytes.data(), static_cast<ssize_t>(bytes.size()) - (i & 3), false);
    }
    }
}

constexpr type_code kTypes[] = {B_BOOL_TYPE,  B_INT16_TYPE, B_INT32_TYPE,  B_INT64_TYPE,   B_FLOAT_TYPE,
                                B_POINT_TYPE, B_RECT_TYPE,  B_STRING_TYPE, B_MESSAGE_TYPE, B_RAW_TYPE};

/// Adds one wrong field of each type to one message each; makes as many messages as that takes.
void AddHostile(const AnyField& field, std::vector<BMessage>* messages)
{
    size_t next = 0;
    const auto message = [&]() {
        if (next == messages->size())
            messages->emplace_back();
        return &(*messages)[next++];
    };
    for (const double number : HostileNumbers(field)) {
        AddNumber(message(), field, field.Type(), number);
        BMessage* const nine = message();
        for (int32 i = 0; i < 9; i++)
            AddNumber(nine, field, field.Type(), number);
    }
    for (const type_code type : kTypes) {
        if (type == field.Type())
            continue;
        AddNumber(message(), field, type, 1);
        AddNumber(message(), field, type, -1);
    }
}

/// Returns archives with one wrong field each.
std::vector<BMessage> HostileMessages(const AnyField& field)
{
    std::vector<BMessage> messages;
    AddHostile(field, &messages);
    return messages;
}

/// Returns every number of one value, and its number of bytes if the range limits that.
std::vector<double> NumbersOf(const BMessage& message, const char* name, type_code type, int32 index)
{
    int16 small = 0;
    int32 number = 0;
    int64 large = 0;
    float broken = 0;
    BPoint point;
    BRect rect;
    const char* text = nullptr;
    if (message.FindInt16(name, &small, index) == B_OK)
        return {static_cast<double>(small)};
    if (message.FindInt32(name, &number, index) == B_OK)
        return {static_cast<double>(number)};
    if (message.FindInt64(name, &large, index) == B_OK)
        return {static_cast<double>(large)};
    if (message.FindFloat(name, &broken, index) == B_OK)
        return {static_cast<double>(broken)};
    if (message.FindPoint(name, &point, index) == B_OK)
        return {static_cast<double>(point.x), static_cast<double>(point.y)};
    if (message.FindRect(name, &rect, index) == B_OK)
        return {static_cast<double>(rect.Width()), static_cast<double>(rect.Height())};
    if (message.FindString(name, &text, index) == B_OK)
        return {static_cast<double>(std::strlen(text))};
    const void* data = nullptr;
    ssize_t size = 0;
    if ((type == B_RAW_TYPE || type == B_MIME_TYPE) && message.FindData(name, type, &data, &size, index) == B_OK)
        return {static_cast<double>(size)};
    return {};
}

/// Expects every number of an archive, and of those in it, that belongs to a declared field to lie in its range.
void ExpectInRange(const BMessage& archive, const std::string& where)
{
    const char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; test::FieldAt(archive, B_ANY_TYPE, i, &name, &type, &count); i++) {
        const AnyField* const field = test::DeclaredField(name);
        if (field == nullptr)
            continue;
        EXPECT_EQ(type, field->Type()) << where << ", " << name;
        EXPECT_LE(count, field->Most()) << where << ", " << name;
        BMessage inner;
        for (int32 index = 0; index < count; index++) {
            if (archive.FindMessage(name, &inner, index) == B_OK)
                ExpectInRange(inner, where);
            for (const double number : NumbersOf(archive, name, type, index))
                EXPECT_TRUE(field->InRange(number)) << where << ", " << name << ": " << number;
        }
    }
}

/// The messages that a chart takes from other programs and from the user, fonts too.
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
    EXPECT_TRUE(kBootCountField.Holds(totals.bootCount) && kUptimeSumField.Holds(totals.sum) &&
                kLastBootField.Holds(totals.lastBoot) && kLastUptimeField.Holds(totals.lastUptime))
        << what;
    UptimeTable table;
    table.SetTo(kUptimesField.Get(hostile));
    for (size_t place = 0; place < UptimeTable::kPlaces; place++) {
        const UptimeEntry& entry = table.At(place);
        EXPECT_TRUE(entry.uptime >= 0 && entry.uptime <= kLongestUptime && entry.bootTime >= 0) << what;
    }
}

} // namespace

class FieldsTest : public AppTest {};

TEST_F(FieldsTest, EachTakesOnlyWhatHasItsTypeAndIsInItsRange)
{
    int taken = 0;
    for (const AnyField* field : AllFields()) {
        BMessage into;
        EXPECT_FALSE(field->Copy(BMessage(), &into)) << field->Name();
        EXPECT_LE(field->Low(), field->High()) << field->Name();
        EXPECT_GE(field->Most(), 1) << field->Name();
        for (const BMessage& hostile : HostileMessages(*field)) {
            type_code type = 0;
            int32 count = 0;
            // The message itself refuses some wrong values, an address of three bytes for example.
            if (hostile.GetInfo(field->Name(), &type, &count) != B_OK)
                continue;
            for (int32 index = -1; index <= count; index++) {
                into.MakeEmpty();
                if (!field->Copy(hostile, &into, index))
                    continue;
                taken++;
                EXPECT_EQ(type, field->Type()) << field->Name();
                EXPECT_TRUE(index >= 0 && index < std::min(count, field->Most())) << field->Name() << " " << index;
                EXPECT_EQ(into.CountNames(B_ANY_TYPE), 1) << field->Name();
                ExpectInRange(into, "a field that took what it should not");
            }
        }
    }
    EXPECT_GT(taken, 100);
}

TEST_F(FieldsTest, EachTakesBothEndsOfItsRange)
{
    int tried = 0;
    for (const AnyField* field : AllFields()) {
        const type_code type = field->Type();
        for (const double end : {field->Low(), field->High()}) {
            if (type != B_INT16_TYPE && type != B_INT32_TYPE && type != B_INT64_TYPE && type != B_FLOAT_TYPE)
                continue;
            tried++;
            BMessage from;
            BMessage into;
            AddNumber(&from, *field, type, end);
            ASSERT_TRUE(field->Copy(from, &into)) << field->Name();
            EXPECT_TRUE(into.HasSameData(from)) << field->Name() << ": " << end;
        }
    }
    EXPECT_GT(tried, 20);
}

TEST_F(FieldsTest, NoNameIsDeclaredTwice)
{
    std::map<std::string, int> names;
    for (const AnyField* field : AllFields())
        EXPECT_EQ(++names[field->Name()], 1) << field->Name();
}

/// Expects all fields of an archive, and of the messages in it, to be declared with their types. Returns their number.
int WalkThrough(const BMessage& archive, const std::string& where)
{
    int fields = 0;
    const char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; test::FieldAt(archive, B_ANY_TYPE, i, &name, &type, &count); i++) {
        fields++;
        const AnyField* const field = test::DeclaredField(name);
        if (field == nullptr)
            ADD_FAILURE() << where << ": " << name << " is not declared";
        else
            EXPECT_EQ(field->Type(), type) << where << ": " << name;
        BMessage inner;
        for (int32 index = 0; archive.FindMessage(name, &inner, index) == B_OK; index++)
            fields += WalkThrough(inner, where + "/" + name);
    }
    return fields;
}

TEST_F(FieldsTest, EverythingThatIsStoredIsDeclared)
{
    Run({[](QelApp& app) { Tabs(app)->Select(1); },
         [this](QelApp& app) {
             app.PostMessage(MSG_OPEN_GLOBAL_PREFS);
             app.Window()->PostMessage(MSG_CHART_PREFS, FirstChart(app));
             Await(
                 [&] { return app.PreferencesWindow() != nullptr && FirstChart(app)->PreferencesWindow() != nullptr; });
         },
         [this](QelApp& app) {
             // Closed windows are archived, too.
             app.PreferencesWindow()->PostMessage(B_QUIT_REQUESTED);
             FirstChart(app)->PreferencesWindow()->PostMessage(B_QUIT_REQUESTED);
             Await(
                 [&] { return app.PreferencesWindow() == nullptr && FirstChart(app)->PreferencesWindow() == nullptr; });
         }});
    Finish();
    int fields = 0;
    for (const bool common : {false, true}) {
        const Preferences store(signature, common);
        fields += WalkThrough(store, common ? "the store of all" : "the user's store");
    }
    EXPECT_GT(fields, 100);
}

TEST_F(FieldsTest, ChartsSamplerAndUptimesStayInRangeWhateverTheyAreGiven)
{
    for (const AnyField* field : AllFields()) {
        const std::string what = "a wrong " + std::string(field->Name());
        const std::vector<BMessage> messages = HostileMessages(*field);
        for (const BMessage& hostile : messages) {
            ToCharts(hostile, what);
            ToUptimes(hostile, what);
        }
        // A sampler has a thread of its own, so not each message gets a new one.
        ToSampler(messages.front(), what);
    }
    for (const AnyField* field : {test::DeclaredField("Delay"), test::DeclaredField("NodesToKeep")})
        for (const BMessage& hostile : HostileMessages(*field))
            ToSampler(hostile, field->Name());
}

TEST_F(FieldsTest, WindowsStayInRangeWhateverTheyAreGiven)
{
    // Opening a window is slow, so all fields are wrong at once.
    std::vector<BMessage> archives;
    for (const AnyField* field : AllFields())
        AddHostile(*field, &archives);
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

TEST_F(FieldsTest, TheApplicationStaysInRangeWhateverItIsSent)
{
    Make();
    Run({[](QelApp& app) {
             for (const AnyField* field : AllFields()) {
                 for (BMessage hostile : HostileMessages(*field)) {
                     for (const uint32 code : {MSG_SET_DELAY, MSG_SET_NODES_TO_KEEP, MSG_CONNECT, MSG_DISCONNECT,
                                               MSG_WINDOW_CLOSED, MSG_NO_LISTENERS}) {
                         hostile.what = code;
                         app.MessageReceived(&hostile);
                     }
                     ASSERT_TRUE(kDelayField.Holds(app.Sampler()->SamplingDelay())) << field->Name();
                     ASSERT_TRUE(app.Sampler()->NodesToKeep() >= 1 &&
                                 app.Sampler()->NodesToKeep() <= Sysinfo::kMaxNodesToKeep)
                         << field->Name();
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

TEST_F(FieldsTest, StoredHistoryLengthsAreHeldToTheRange)
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
