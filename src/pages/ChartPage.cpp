// SPDX-License-Identifier: MIT
#include "src/pages/ChartPage.h"

#include "src/chart/ChartView.h"
#include "src/support/MessageCodes.h"

#include <utility>

ChartPage::ChartPage(const char* name, ChartView* chart, SaveFunction save)
    : PrefsTab(name)
    , fChart(chart)
    , fSave(std::move(save))
{
    fSave(*fChart, &fSnapshot);
}

void ChartPage::Revert()
{
    if (fChart == nullptr)
        return;
    // A chart whose tab is hidden has no looper; its settings are restored all the same.
    const bool locked = fChart->LockLooper();
    fChart->LoadPrefsFrom(&fSnapshot);
    fChart->Invalidate();
    if (locked)
        fChart->UnlockLooper();
}

bool ChartPage::SavePrefsForDD(BMessage* message)
{
    if (fChart == nullptr)
        return false;
    message->what = MSG_PREFS_DROP;
    fSave(*fChart, message);
    return true;
}
