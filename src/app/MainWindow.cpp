// SPDX-License-Identifier: MIT
#include "src/app/MainWindow.h"

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/interface/Menu.h"
#include "kits/interface/MenuBar.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/TabView.h"
#include "src/app/UptimeView.h"
#include "src/chart/ChartTab.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"

namespace {

constexpr const char* kTitle = "Qel";

/// Returns the size of a stored frame, at the origin.
BRect SizeIn(const BMessage& archive, const kits::Field<BRect>& field)
{
    BRect frame = field.Get(archive);
    frame.OffsetTo(B_ORIGIN);
    return frame;
}

BMenuItem* FileItem(const char* label, uint32 what, char shortcut)
{
    auto* item = new BMenuItem(label, new BMessage(what), shortcut);
    item->SetTarget(be_app);
    return item;
}

} // namespace

MainWindow::MainWindow(BRect frame, SmartWindow** ownerSlot)
    : SmartWindow(frame, kTitle, nullptr, ownerSlot, 0)
{
    Initialise();
    AddChartTab(new ChartViewHolder(BRect(0, 0, 100, 100)), kFirstChartFrame);
    fTabView->Select(0);
}

MainWindow::MainWindow(BMessage* archive, SmartWindow** ownerSlot)
    : SmartWindow(archive, kTitle, nullptr, ownerSlot)
{
    const BRect frame = SizeIn(*archive, kWindowFrameField);
    ResizeTo(frame.Width(), frame.Height());
    Initialise();
    Lock();
    BMessage charts;
    if (kHolderField.Find(*archive, &charts))
        AddChartTab(new ChartViewHolder(&charts), SizeIn(*archive, kChartFrameField));
    else
        AddChartTab(new ChartViewHolder(BRect(5, 5, 100, 100)), kFirstChartFrame);
    fTabView->Select(0);
    Unlock();
    fTabView->Select(kSelectionField.Get(*archive));
}

void MainWindow::Initialise()
{
    SetSizeLimits(kMinWindowSide, kMaxWindowSide, kMinWindowSide, kMaxWindowSide);

    fMenuBar = new BMenuBar(BRect(0, 0, 32767, 15), "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, B_ITEMS_IN_ROW, true);
    auto* menu = new BMenu(Tr("File"), B_ITEMS_IN_COLUMN);
    menu->AddItem(FileItem(Tr("Preferences"), MSG_OPEN_GLOBAL_PREFS, 'P'));
    menu->AddSeparatorItem();
    menu->AddItem(FileItem(Tr("About"), B_ABOUT_REQUESTED, 'A'));
    menu->AddSeparatorItem();
    menu->AddItem(FileItem(Tr("Quit"), B_QUIT_REQUESTED, 'Q'));
    fMenuBar->AddItem(menu);

    fTabView = new BTabView(BRect(0, 0, 200, 200), "", B_WIDTH_AS_USUAL, B_FOLLOW_ALL_SIDES,
                            B_WILL_DRAW | B_NAVIGABLE_JUMP | B_NAVIGABLE);
    Lock();
    AddChild(fTabView);
    AddChild(fMenuBar);
    BRect rest = Bounds();
    rest.top = fMenuBar->Bounds().bottom + 1;
    fTabView->MoveTo(rest.LeftTop());
    fTabView->ResizeTo(rest.Width(), rest.Height());

    auto* uptimes = new UptimeView(rest);
    fTabView->AddTab(uptimes, nullptr);
    fTabView->TabAt(0)->SetLabel(Tr("Uptime"));
    BRect page = fTabView->Bounds();
    page.top += fTabView->TabHeight();
    uptimes->MoveTo(3, 3);
    uptimes->ResizeTo(page.Width() - 8, page.Height() - 8);
    Unlock();
}

void MainWindow::AddChartTab(ChartViewHolder* holder, BRect chartFrame)
{
    fChartTab = new ChartTab(this, holder, chartFrame);
    fTabView->AddTab(holder, fChartTab);
    fChartTab->SetLabel(Tr("Charts"));
    holder->Rerender();
}

status_t MainWindow::Archive(BMessage* into, bool /*deep*/) const
{
    if (const status_t status = SmartWindow::Archive(into, false); status != B_OK)
        return status;
    BMessage charts;
    status_t status = fChartTab->View()->Archive(&charts, true);
    if (status == B_OK)
        status = kHolderField.Add(into, charts);
    if (status == B_OK)
        status = kChartFrameField.Add(into, fChartTab->ChartFrame());
    if (status == B_OK)
        status = kWindowFrameField.Add(into, fChartTab->OtherFrame());
    return status == B_OK ? kSelectionField.Add(into, fTabView->Selection()) : status;
}

void MainWindow::FrameResized(float width, float height)
{
    if (fTabView->TabAt(fTabView->Selection()) == fChartTab)
        fChartTab->SetChartFrame(Frame());
    else
        fChartTab->SetOtherFrame(Frame());
    SmartWindow::FrameResized(width, height);
}
