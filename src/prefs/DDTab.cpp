// SPDX-License-Identifier: MIT
#include "src/prefs/DDTab.h"

DDTab::DDTab(BView* view)
    : BTab(view)
{
}

void DDTab::DrawLabel(BView* owner, BRect frame)
{
    fLabelFrame = frame;
    BTab::DrawLabel(owner, frame);
}
