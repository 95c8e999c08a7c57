// SPDX-License-Identifier: MIT
#include "src/pages/ChartPreferences.h"

#include "src/chart/ChartView.h"
#include "src/pages/ChartColorTab.h"
#include "src/pages/ChartFontsTab.h"
#include "src/pages/ChartGeneralTab.h"
#include "src/pages/ChartSourcesTab.h"
#include "src/pages/SysinfoTab.h"
#include "src/prefs/PrefsWindow.h"
#include "src/support/Tr.h"

namespace {

void Open(ChartView* chart, SmartWindow** slot, BMessage* archive)
{
    const char* const title = Tr("Chart preferences");
    PrefsWindow* window = nullptr;
    if (archive->IsEmpty())
        window = new PrefsWindow(BRect(50, 50, 490, 330), title, chart, slot);
    else
        window = new PrefsWindow(archive, title, chart, slot);
    *slot = window;
    window->AddPrefsTab(new ChartGeneralTab(chart));
    window->AddPrefsTab(new ChartColorTab(chart));
    window->AddPrefsTab(new ChartSourcesTab(chart));
    window->AddPrefsTab(new ChartFontsTab(chart));
    if (!chart->IsReplicant())
        window->AddPrefsTab(new SysinfoTab(nullptr));
    window->SetSizeLimits(440, 100000, 280, 100000);
    window->Show();
}

} // namespace

void UseChartPreferences()
{
    ChartView::SetPreferencesOpener(Open);
}
