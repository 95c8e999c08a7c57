// SPDX-License-Identifier: MIT
#include "src/pages/ChartColorTab.h"

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Alert.h"
#include "kits/interface/Button.h"
#include "kits/interface/CheckBox.h"
#include "kits/interface/Fields.h"
#include "kits/interface/MenuField.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/Screen.h"
#include "kits/interface/Slider.h"
#include "kits/kernel/Clock.h"
#include "src/chart/ChartView.h"
#include "src/pages/PageControls.h"
#include "src/support/ColorMessage.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"
#include "src/support/ui/ColorPreView.h"
#include "src/support/ui/MenuTargets.h"
#include "src/support/ui/SmartColorControl.h"

#include <algorithm>

namespace {

constexpr BRect kSomewhere(0, 0, 5, 5);

/// Gap between the colour control and its neighbours, in pixels.
constexpr float kBesideControl = 5;
constexpr float kAbovePick = 3;

/// The two columns below, as fractions of the page's width.
constexpr float kLeftColumn = 0.02f;
constexpr float kLeftWidth = 0.36f;
constexpr float kRightColumn = 0.42f;
constexpr float kRightWidth = 0.56f;
constexpr float kDividerPart = 2.3f;

/// Picks at shorter intervals are quick ones.
constexpr bigtime_t kQuickPick = 500000;

} // namespace

ChartColorTab::ChartColorTab(ChartView* chart)
    : ChartPage(TrLater("Colors"), chart, &ChartView::SaveColorPrefsTo)
{
    fColors = new SmartColorControl(BPoint(0, 0), 8, new BMessage(MSG_COLOR_CHANGED));
    fColors->SetAccessibleName(Tr("Color"));
    AddChild(fColors);
    fPreview = new ColorPreView(BRect(5, 5, 10, 10), fColors);
    fPreview->SetViewColor(fColors->ValueAsColor());
    AddChild(fPreview);
    fPick = new BButton(kSomewhere, "", Tr("Pick Desktop"), new BMessage(MSG_PICK_DESKTOP));
    AddChild(fPick);
    MakeTargetField();
    MakeAATargetField();
    fTest = new BCheckBox(kSomewhere, "", Tr("Test on Desktop"), new BMessage(MSG_TEST_ON_DESKTOP));
    AddChild(fTest);
    fTransparent = new BCheckBox(kSomewhere, "", Tr("Transparent background"), new BMessage(MSG_TRANSPARENT));
    AddChild(fTransparent);
    fAASlider =
        new BSlider(kSomewhere, "", Tr("Antialiasing (%)"), new BMessage(MSG_AA_VALUE), 0, 100, B_TRIANGLE_THUMB);
    fAASlider->SetLimitLabels(Tr("Off"), Tr("Full"));
    fAASlider->SetHashMarks(B_HASH_MARKS_BOTTOM);
    fAASlider->SetHashMarkCount(10);
    fAASlider->SetEnabled(false);
    AddChild(fAASlider);
}

ChartColorTab::~ChartColorTab()
{
    if (fTesting)
        BScreen(Window()).RestoreDesktop();
}

void ChartColorTab::MakeTargetField()
{
    auto* menu = new BPopUpMenu("");
    menu->AddItem(new BMenuItem(Tr("< none >"), new BMessage(MSG_TARGET_NONE)));
    menu->AddItem(new BMenuItem(Tr("Chart"), new BMessage(MSG_TARGET_CHART)));
    menu->AddItem(new BMenuItem(Tr("Background"), new BMessage(MSG_TARGET_BACKGROUND)));
    menu->AddItem(new BMenuItem(Tr("Border"), new BMessage(MSG_TARGET_BORDER)));
    menu->AddItem(new BMenuItem(Tr("Value"), new BMessage(MSG_TARGET_VALUE)));
    menu->AddItem(new BMenuItem(Tr("Title"), new BMessage(MSG_TARGET_TITLE)));
    menu->ItemAt(0)->SetMarked(true);
    fTargetField = new BMenuField(kSomewhere, "", Tr("Target:"), menu);
    AddChild(fTargetField);
}

void ChartColorTab::MakeAATargetField()
{
    auto* menu = new BPopUpMenu("");
    menu->AddItem(new BMenuItem(Tr("Chart"), new BMessage(MSG_AA_TARGET_CHART)));
    menu->AddItem(new BMenuItem(Tr("Background"), new BMessage(MSG_AA_TARGET_BACKGROUND)));
    menu->AddItem(new BMenuItem(Tr("Average"), new BMessage(MSG_AA_TARGET_AVERAGE)));
    menu->ItemAt(2)->SetMarked(true);
    menu->SetEnabled(false);
    fAATargetField = new BMenuField(kSomewhere, "", Tr("AA target:"), menu);
    AddChild(fAATargetField);
}

void ChartColorTab::AllAttached()
{
    ChartPage::AllAttached();
    // The first reading of the desktop takes longest.
    BScreen(Window()).DesktopColor();
    for (BControl* control : std::initializer_list<BControl*>{fColors, fPick, fTest, fTransparent, fAASlider})
        control->SetTarget(this);
    SetTargetForItemsRecursive(fTargetField->Menu(), this);
    SetTargetForItemsRecursive(fAATargetField->Menu(), this);
}

void ChartColorTab::MessageReceived(BMessage* message)
{
    rgb_color color;
    if (message->what == MSG_DESKTOP_COLOR && kits::kColorField.Find(*message, &color))
        TakeColor(color);
    else if (Chart() == nullptr || !HandleChartMessage(message->what))
        ChartPage::MessageReceived(message);
}

bool ChartColorTab::HandleChartMessage(uint32 code)
{
    switch (code) {
    case MSG_COLOR_CHANGED:
        ColorChanged();
        return true;
    case MSG_AA_TARGET_CHART:
        SetAATarget(kAATargetChart);
        return true;
    case MSG_AA_TARGET_BACKGROUND:
        SetAATarget(kAATargetBackground);
        return true;
    case MSG_AA_TARGET_AVERAGE:
        SetAATarget(kAATargetAverage);
        return true;
    case MSG_TARGET_CHART:
        ChooseTarget(kChart);
        return true;
    case MSG_TARGET_BACKGROUND:
        ChooseTarget(kBackground);
        return true;
    case MSG_TARGET_VALUE:
        ChooseTarget(kValue);
        return true;
    case MSG_TARGET_TITLE:
        ChooseTarget(kTitle);
        return true;
    case MSG_TARGET_BORDER:
        ChooseTarget(kBorder);
        return true;
    case MSG_TARGET_NONE:
        ChooseTarget(kNone);
        return true;
    case MSG_AA_VALUE:
        AAValueChanged();
        return true;
    case MSG_PICK_DESKTOP:
        PickDesktop();
        return true;
    case MSG_TEST_ON_DESKTOP:
        TestOnDesktop();
        return true;
    case MSG_TRANSPARENT:
        Chart()->SetTransparent(fTransparent->Value() == B_CONTROL_ON);
        // The chart itself would draw it only when it scrolls the next time.
        Chart()->Invalidate();
        return true;
    default:
        return false;
    }
}

void ChartColorTab::ColorChanged()
{
    const rgb_color color = fColors->ValueAsColor();
    switch (fTarget) {
    case kChart:
        Chart()->SetChartColor(color, 0);
        break;
    case kBackground:
        Chart()->SetBackgroundColor(color);
        break;
    case kValue:
        Chart()->SetValueColor(color);
        break;
    case kTitle:
        Chart()->SetTitleColor(color);
        break;
    case kBorder:
        Chart()->SetBorderColor(color);
        break;
    case kNone:
        fNoTargetColor = color;
        break;
    }
    ShowInPreview(color);
}

void ChartColorTab::ShowInPreview(rgb_color color)
{
    fPreview->SetViewColor(color);
    fPreview->Invalidate();
    if (fTesting)
        BScreen(Window()).SetDesktopColor(color, true);
}

rgb_color ChartColorTab::TargetColor() const
{
    switch (fTarget) {
    case kChart:
        return Chart()->ChartColor(0);
    case kBackground:
        return Chart()->Settings().backgroundColor;
    case kValue:
        return Chart()->Settings().value.color;
    case kTitle:
        return Chart()->Settings().title.color;
    case kBorder:
        return Chart()->Settings().borderColor;
    case kNone:
        break;
    }
    return fNoTargetColor;
}

void ChartColorTab::ChooseTarget(Target target)
{
    fTarget = target;
    if (IsText())
        fAASlider->SetPosition(fTarget == kValue ? Chart()->Settings().value.aaValue
                                                 : Chart()->Settings().title.aaValue);
    ShowAntialiasing();
    fColors->SetValue(TargetColor());
    ShowInPreview(fColors->ValueAsColor());
}

void ChartColorTab::ShowAntialiasing()
{
    fAASlider->SetEnabled(IsText());
    fAATargetField->Menu()->SetEnabled(IsText());
    if (!IsText())
        return;
    LabelAASlider();
    const int16 target = fTarget == kValue ? Chart()->Settings().value.aaTarget : Chart()->Settings().title.aaTarget;
    if (BMenuItem* item = fAATargetField->Menu()->ItemAt(target - 1))
        item->SetMarked(true);
}

void ChartColorTab::LabelAASlider()
{
    fAASlider->SetLabel(PercentLabel(Tr("Antialiasing"), fAASlider->Position()).c_str());
    fAASlider->Invalidate();
}

void ChartColorTab::SetAATarget(int16 target)
{
    // Setting the text's colour again makes the chart compute the colours to which it fades.
    if (fTarget == kTitle) {
        Chart()->SetTitleAATarget(target);
        Chart()->SetTitleColor(Chart()->Settings().title.color);
    } else if (fTarget == kValue) {
        Chart()->SetValueAATarget(target);
        Chart()->SetValueColor(Chart()->Settings().value.color);
    }
}

void ChartColorTab::AAValueChanged()
{
    const float value = fAASlider->Position();
    if (fTarget == kTitle)
        Chart()->SetTitleAAValue(value);
    else if (fTarget == kValue)
        Chart()->SetValueAAValue(value);
    LabelAASlider();
}

void ChartColorTab::PickDesktop()
{
    BScreen(Window()).AskDesktopColor(BMessage(MSG_DESKTOP_COLOR), BMessenger(this));
    CountPick();
}

void ChartColorTab::TakeColor(rgb_color color)
{
    fColors->SetValue(color);
    PostToPage(this, MSG_COLOR_CHANGED);
}

/// A joke for users who cannot stop.
void ChartColorTab::CountPick()
{
    const bigtime_t now = system_time();
    if (now - fLastPick >= kQuickPick) {
        fPicks = 0;
    } else if (fPicks++ > 1) {
        auto* alert = new BAlert(Tr("Fun"), Tr("Hey men, stop picking me or... !\n\n\t\t\t\t- Desktop"),
                                 Tr(" FunFunFun  :) "), nullptr, nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
        alert->Go(nullptr);
        fPicks = 0;
    }
    fLastPick = now;
}

void ChartColorTab::TestOnDesktop()
{
    BScreen screen(Window());
    fTesting = fTest->Value() == B_CONTROL_ON;
    if (fTesting)
        screen.SetDesktopColor(fColors->ValueAsColor(), true);
    else
        screen.RestoreDesktop();
}

void ChartColorTab::GetState()
{
    if (Chart() == nullptr)
        return;
    fTargetField->Menu()->ItemAt(0)->SetMarked(true);
    if (fTarget != kNone) {
        fColors->SetValue(fNoTargetColor);
        fTarget = kNone;
        // A hidden page gets no messages, and sets up its target when it is shown.
        if (Looper() != nullptr)
            PostToPage(this, MSG_COLOR_CHANGED);
        else
            ColorChanged();
    }
    fAASlider->SetEnabled(false);
    fTransparent->SetValue(Chart()->Settings().transparent);
}

void ChartColorTab::Rerender()
{
    ChartPage::Rerender();
    const float width = Bounds().Width();
    const float bottom = Bounds().bottom;
    const float controlHeight = fColors->Bounds().Height();
    const float beside = fColors->Bounds().right + kBesideControl;
    const float besideWidth = Bounds().right - beside;
    const float pickHeight = fPick->Bounds().Height();

    fPreview->MoveTo(beside, 0);
    fPreview->ResizeTo(besideWidth, controlHeight - pickHeight - kAbovePick);
    fPick->MoveTo(beside, controlHeight - pickHeight);
    fPick->ResizeTo(besideWidth, pickHeight);
    fPick->Invalidate();

    const float top = fColors->Frame().bottom + 1;
    const float space = bottom - top;
    const float fieldHeight = fTargetField->Bounds().Height();
    float gap = (space - 2 * fieldHeight) / 3;
    float y = top + gap;
    for (BMenuField* field : {fTargetField, fAATargetField}) {
        field->MoveTo(width * kLeftColumn, y);
        field->ResizeTo(width * kLeftWidth, field->Bounds().Height());
        field->SetDivider(width * kLeftWidth / kDividerPart);
        y += fieldHeight + gap;
    }

    const float boxHeight = fTest->Bounds().Height();
    gap = (space - 2 * boxHeight - fAASlider->Bounds().Height()) * 0.25f;
    y = top + gap;
    for (BView* view : std::initializer_list<BView*>{fTest, fTransparent, fAASlider}) {
        view->MoveTo(width * kRightColumn, y);
        y += boxHeight + gap;
    }
    fAASlider->ResizeTo(width * kRightWidth, fAASlider->Bounds().Height());
}

void ChartColorTab::GetMinimumSize(float* width, float* height)
{
    const BPoint colors = PreferredSizeOf(fColors);
    const BPoint pick = PreferredSizeOf(fPick);
    const float fieldHeight = PreferredSizeOf(fTargetField).y;
    const BPoint test = PreferredSizeOf(fTest);
    const BPoint transparent = PreferredSizeOf(fTransparent);
    const BPoint slider = PreferredSizeOf(fAASlider);
    *width = std::max(
        {colors.x + kBesideControl + pick.x,
         std::max(FieldWidth(fTargetField, kDividerPart), FieldWidth(fAATargetField, kDividerPart)) / kLeftWidth,
         std::max({test.x, transparent.x, slider.x}) / kRightWidth});
    *height = colors.y + 1 + std::max(2 * fieldHeight + 3 * kSmallestGap, 2 * test.y + slider.y + 4 * kSmallestGap);
}
