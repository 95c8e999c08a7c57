// SPDX-License-Identifier: MIT
#include "src/chart/ChartView.h"
#include "src/pages/ChartColorTab.h"
#include "src/pages/ChartFontsTab.h"
#include "src/pages/ChartGeneralTab.h"
#include "src/pages/ChartSourcesTab.h"
#include "src/pages/SysinfoTab.h"
#include "src/prefs/PrefsWindow.h"
#include "src/support/Tr.h"
#include "src/support/ui/SmartWindow.h"

// A chart's preferences window.

void ChartView::OpenPrefs()
{
    if (fPrefsWindow != nullptr) {
        fPrefsWindow->Activate();
        return;
    }
    const char* const title = Tr("Chart preferences");
    PrefsWindow* window = nullptr;
    if (fPrefsWindowArchive.IsEmpty())
        window = new PrefsWindow(BRect(50, 50, 490, 330), title, this, &fPrefsWindow);
    else
        window = new PrefsWindow(&fPrefsWindowArchive, title, this, &fPrefsWindow);
    fPrefsWindow = window;
    window->AddPrefsTab(new ChartGeneralTab(this));
    window->AddPrefsTab(new ChartColorTab(this));
    window->AddPrefsTab(new ChartSourcesTab(this));
    window->AddPrefsTab(new ChartFontsTab(this));
    if (!fReplicant)
        window->AddPrefsTab(new SysinfoTab(nullptr));
    window->SetSizeLimits(440, 100000, 280, 100000);
    window->Show();
}

void ChartView::PrefsWindowClosed(const BMessage& message)
{
    void* container = nullptr;
    if (message.FindPointer("Container", &container) == B_OK && container == &fPrefsWindow)
        message.FindMessage("Archive", &fPrefsWindowArchive);
}

void ChartView::RefreshPrefsWindowArchive() const
{
    if (fPrefsWindow == nullptr)
        return;
    fPrefsWindowArchive.MakeEmpty();
    fPrefsWindow->Archive(&fPrefsWindowArchive, false);
}

void ChartView::ClosePrefs()
{
    if (fPrefsWindow != nullptr)
        fPrefsWindow->Quit();
}
