// SPDX-License-Identifier: MIT
#include "src/pages/ChartSourcesTab.h"

#include "kits/interface/Button.h"
#include "kits/interface/ScrollView.h"
#include "kits/interface/TextControl.h"
#include "src/chart/ChartView.h"
#include "src/pages/PageControls.h"
#include "src/sampling/list/SourceListView.h"
#include "src/support/MessageCodes.h"

#include <algorithm>

namespace {

constexpr float kInset = 5;

} // namespace

ChartSourcesTab::ChartSourcesTab(ChartView* chart)
    : ChartPage(TrLater("Sources"), chart, &ChartView::SaveProviderPrefsTo)
    , fList(new SourceListView)
    , fScrollView(new BScrollView("", fList, B_FOLLOW_NONE, 0, false, true, B_FANCY_BORDER))
    , fFilter(new BTextControl(kSomewhere, "", Tr("Find:"), "", nullptr))
    , fAdd(new BButton(kSomewhere, "", Tr("Add to chart"), new BMessage(MSG_ADD_SOURCES)))
{
    fList->SetAccessibleName(Tr("Sources"));
    fList->SetToolTip(Tr("Drag a source or a group onto a chart, or copy it with Ctrl+C"));
    fList->SetInvocationMessage(new BMessage(MSG_ADD_SOURCES));
    fList->SetSelectionMessage(new BMessage(MSG_SOURCE_SELECTED));
    fFilter->SetMessage(new BMessage(MSG_ADD_SOURCES));
    fFilter->SetModificationMessage(new BMessage(MSG_FILTER_SOURCES));
    AddChild(fScrollView);
    AddChild(fFilter);
    AddChild(fAdd);
    EnableAdd();
}

void ChartSourcesTab::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_ADD_SOURCES:
        AddSelected();
        break;
    case MSG_FILTER_SOURCES:
        fList->SetFilter(fFilter->Text());
        EnableAdd();
        break;
    case MSG_SOURCE_SELECTED:
        EnableAdd();
        break;
    default:
        ChartPage::MessageReceived(message);
    }
}

void ChartSourcesTab::EnableAdd()
{
    fAdd->SetEnabled(fList->CurrentSelection() >= 0);
}

void ChartSourcesTab::AddSelected()
{
    BMessage sources;
    if (Chart() != nullptr && fList->AddSourcesTo(&sources, fList->CurrentSelection()))
        Chart()->MessageReceived(&sources);
}

void ChartSourcesTab::Rerender()
{
    ChartPage::Rerender();
    const float width = Bounds().Width() - 2 * kInset;
    const float height = Bounds().Height() - 2 * kInset;
    const float rowHeight = std::max(fFilter->Bounds().Height(), fAdd->Bounds().Height());
    const float rowTop = kInset + height - rowHeight;
    const float addWidth = fAdd->Bounds().Width();

    fScrollView->MoveTo(kInset, kInset);
    fScrollView->ResizeTo(width, height - rowHeight - kInset - 1);
    fFilter->MoveTo(kInset, rowTop + (rowHeight - fFilter->Bounds().Height()) / 2);
    fFilter->ResizeTo(width - addWidth - kInset - 1, fFilter->Bounds().Height());
    fAdd->MoveTo(kInset + width - addWidth, rowTop + (rowHeight - fAdd->Bounds().Height()) / 2);
}

void ChartSourcesTab::GetMinimumSize(float* width, float* height)
{
    constexpr float kRowsAtLeast = 4;
    const BPoint filter = PreferredSizeOf(fFilter);
    const BPoint add = PreferredSizeOf(fAdd);
    *width = filter.x + add.x + 3 * kInset + 1;
    *height = (kRowsAtLeast + 1) * std::max(filter.y, add.y) + 3 * kInset + 1;
}
