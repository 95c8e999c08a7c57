// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/interface/InterfaceKit.h"
#include "kits/interface/Shortcuts.h"
#include "src/chart/ChartSettings.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/MessageCodes.h"
#include "tests/fuzz/FlatMessage.h"
#include "tests/fuzz/Fuzz.h"

#include <memory>
#include <string>

// Archives, dropped settings and commands as they come from files, drags and other programs.

namespace {

void CheckChart(const ChartView& chart)
{
    Expect(chart.CountValueProviders() <= kMaxSources);
    Expect(kPageSizeField.Holds(chart.Settings().pageSize));
    Expect(kSkipValueField.Holds(chart.Settings().skip) && kValueSkipValueField.Holds(chart.Settings().valueSkip));
    Expect(kChartTypeField.Holds(chart.Settings().chartType) && kModeField.Holds(chart.Settings().mode));
    Expect(kValueAAValueField.Holds(chart.Settings().value.aaValue));
    Expect(kTitleAAValueField.Holds(chart.Settings().title.aaValue));
    Expect(kValueFontField.Holds(chart.Settings().value.font));
    Expect(kTitleFontField.Holds(chart.Settings().title.font));
    Expect(std::string_view(chart.Title()).size() <= static_cast<size_t>(kMaxTitleLength));
    Expect(chart.Picture().Column() >= 0);
}

constexpr uint32 kCodes[] = {MSG_PREFS_DROP,
                             MSG_SOURCE_DROP,
                             MSG_SET_VALUE_POS,
                             MSG_SET_TITLE_POS,
                             MSG_SET_COLUMN,
                             MSG_CHART_PAUSE,
                             MSG_REMOVE_SOURCE,
                             MSG_SYSINFO_SAMPLE,
                             MSG_WINDOW_CLOSED,
                             MSG_DISTRIBUTE,
                             MSG_DISTRIBUTE_VALUE_POS,
                             MSG_SERVER_GONE,
                             MSG_SYNC_OTHERS,
                             B_SIMPLE_DATA,
                             B_MIME_DATA,
                             B_PASTE,
                             '!FNT'};

} // namespace

// Memory that the toolkit's font library keeps for the whole process.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    Expect(kits::InitInterface(*count, *arguments) == B_OK);
    kits::UseShortcuts();
    return 0;
}

// The first byte selects an action; the rest is the map of the message that the action takes.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const std::string flat = FlatMessage(std::string(TextOf(data + 1, size - 1)));
    BMessage message;
    // As somebody else would write it: without addresses.
    if (kits::ReadMessage(flat, &message) != B_OK)
        return 0;
    const size_t action = data[0] % (std::size(kCodes) + 2);
    if (action == std::size(kCodes)) {
        const std::unique_ptr<ChartView> chart(ChartView::Instantiate(&message));
        const ChartView loaded(&message);
        CheckChart(chart != nullptr ? *chart : loaded);
        CheckChart(loaded);
    } else if (action == std::size(kCodes) + 1) {
        ChartViewHolder holder(BRect(0, 0, 300, 200));
        holder.LoadPrefsFrom(&message);
        for (int32 i = 0; i < holder.CountCharts(); i++)
            CheckChart(*holder.ChartAt(i));
    } else {
        ChartView chart;
        chart.LoadPrefsFrom(&message);
        CheckChart(chart);
        message.what = kCodes[action];
        kits::MessageAccess::SetDelivered(message, {}, false);
        chart.MessageReceived(&message);
        CheckChart(chart);
    }
    return 0;
}
