// SPDX-License-Identifier: MIT
#include "src/pages/ChartColorTab.h"

#include "kits/application/Messenger.h"
#include "kits/interface/Alert.h"
#include "kits/interface/Button.h"
#include "kits/interface/CheckBox.h"
#include "kits/interface/Fields.h"
#include "kits/interface/Screen.h"
#include "kits/interface/Slider.h"
#include "kits/kernel/Clock.h"
#include "src/chart/ChartView.h"
#include "src/pages/PageControls.h"
#include "src/support/ColorMessage.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"
#include "src/support/ui/ColorPreView.h"
#include "src/support/ui/SmartColorControl.h"

#include <algorithm>

/// A colour that the page edits. The target "< none >" has no functions: its colour belongs to no part of the chart.
struct ColorTarget {
    uint32 code;
    const char* label;
    rgb_color (*color)(const ChartView& chart) = nullptr;
    void (*setColor)(ChartView& chart, rgb_color color) = nullptr;
    // Only texts are antialiased.
    CaptionSettings ChartSettings::*text = nullptr;
    void (ChartView::*setAATarget)(int16 target) = nullptr;
    void (ChartView::*setAAValue)(float value) = nullptr;
};

namespace {

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

struct AATarget {
    uint32 code;
    const char* label;
    int16 target;
};

constexpr AATarget kAATargets[] = {
    {MSG_AA_TARGET_CHART, TrLater("Chart"), kAATargetChart},
    {MSG_AA_TARGET_BACKGROUND, TrLater("Background"), kAATargetBackground},
    {MSG_AA_TARGET_AVERAGE, TrLater("Average"), kAATargetAverage},
};

constexpr ColorTarget kTargets[] = {
    {MSG_TARGET_NONE, TrLater("< none >")},
    {MSG_TARGET_CHART, TrLater("Chart"), [](const ChartView& chart) { return chart.ChartColor(0); },
     [](ChartView& chart, rgb_color color) { chart.SetChartColor(color, 0); }},
    {MSG_TARGET_BACKGROUND, TrLater("Background"),
     [](const ChartView& chart) { return chart.Settings().backgroundColor; },
     [](ChartView& chart, rgb_color color) { chart.SetBackgroundColor(color); }},
    {MSG_TARGET_BORDER, TrLater("Border"), [](const ChartView& chart) { return chart.Settings().borderColor; },
     [](ChartView& chart, rgb_color color) { chart.SetBorderColor(color); }},
    {MSG_TARGET_VALUE, TrLater("Value"), [](const ChartView& chart) { return chart.Settings().value.color; },
     [](ChartView& chart, rgb_color color) { chart.SetValueColor(color); }, &ChartSettings::value,
     &ChartView::SetValueAATarget, &ChartView::SetValueAAValue},
    {MSG_TARGET_TITLE, TrLater("Title"), [](const ChartView& chart) { return chart.Settings().title.color; },
     [](ChartView& chart, rgb_color color) { chart.SetTitleColor(color); }, &ChartSettings::title,
     &ChartView::SetTitleAATarget, &ChartView::SetTitleAAValue},
};

} // namespace

ChartColorTab::ChartColorTab(ChartView* chart)
    : ChartPage(TrLater("Colors"), chart, &ChartView::SaveColorPrefsTo)
    , fTarget(kTargets)
{
    fColors = new SmartColorControl(BPoint(0, 0), 8, new BMessage(MSG_COLOR_CHANGED));
    fColors->SetAccessibleName(Tr("Color"));
    AddChild(fColors);
    fPreview = new ColorPreView(BRect(5, 5, 10, 10), fColors);
    fPreview->SetViewColor(fColors->ValueAsColor());
    AddChild(fPreview);
    fPick = new BButton(kSomewhere, "", Tr("Pick Desktop"), new BMessage(MSG_PICK_DESKTOP));
    AddChild(fPick);
    fTargetField = AddMenuField(this, Tr("Target:"), kTargets, 0);
    fAATargetField = AddMenuField(this, Tr("AA target:"), kAATargets, 2);
    fAATargetField->Menu()->SetEnabled(false);
    fTest = new BCheckBox(kSomewhere, "", Tr("Test on Desktop"), new BMessage(MSG_TEST_ON_DESKTOP));
    AddChild(fTest);
    fTransparent = new BCheckBox(kSomewhere, "", Tr("Transparent background"), new BMessage(MSG_TRANSPARENT));
    AddChild(fTransparent);
    fAASlider = AddSlider(this, Tr("Antialiasing (%)"), MSG_AA_VALUE, 0, 100, Tr("Off"), Tr("Full"), 10);
    fAASlider->SetEnabled(false);
}

ChartColorTab::~ChartColorTab()
{
    if (fTesting)
        BScreen(Window()).RestoreDesktop();
}

void ChartColorTab::AllAttached()
{
    ChartPage::AllAttached();
    // The first reading of the desktop takes longest.
    BScreen(Window()).DesktopColor();
}

void ChartColorTab::MessageReceived(BMessage* message)
{
    rgb_color color;
    if (message->what == MSG_DESKTOP_COLOR && kits::kColorField.Find(*message, &color)) {
        fColors->SetValue(color);
        PostToPage(this, MSG_COLOR_CHANGED);
    } else if (Chart() == nullptr) {
        ChartPage::MessageReceived(message);
    } else if (const ColorTarget* target = FindChoice(kTargets, message->what)) {
        ChooseTarget(target);
    } else if (const AATarget* aaTarget = FindChoice(kAATargets, message->what)) {
        if (Text() != nullptr)
            (Chart()->*fTarget->setAATarget)(aaTarget->target);
    } else {
        ControlChanged(message);
    }
}

void ChartColorTab::ControlChanged(BMessage* message)
{
    switch (message->what) {
    case MSG_COLOR_CHANGED:
        ColorChanged();
        break;
    case MSG_AA_VALUE:
        if (Text() != nullptr)
            (Chart()->*fTarget->setAAValue)(fAASlider->Position());
        LabelAASlider();
        break;
    case MSG_PICK_DESKTOP:
        BScreen(Window()).AskDesktopColor(BMessage(MSG_DESKTOP_COLOR), BMessenger(this));
        CountPick();
        break;
    case MSG_TEST_ON_DESKTOP:
        TestOnDesktop();
        break;
    case MSG_TRANSPARENT:
        Chart()->SetTransparent(fTransparent->Value() == B_CONTROL_ON);
        // The chart itself would draw it only when it scrolls the next time.
        Chart()->Invalidate();
        break;
    default:
        ChartPage::MessageReceived(message);
    }
}

void ChartColorTab::ColorChanged()
{
    const rgb_color color = fColors->ValueAsColor();
    if (fTarget->setColor != nullptr)
        fTarget->setColor(*Chart(), color);
    else
        fNoTargetColor = color;
    ShowInPreview(color);
}

void ChartColorTab::ShowInPreview(rgb_color color)
{
    fPreview->SetViewColor(color);
    fPreview->Invalidate();
    if (fTesting)
        BScreen(Window()).SetDesktopColor(color, true);
}

const CaptionSettings* ChartColorTab::Text() const
{
    return fTarget->text != nullptr ? &(Chart()->Settings().*fTarget->text) : nullptr;
}

void ChartColorTab::ChooseTarget(const ColorTarget* target)
{
    fTarget = target;
    const CaptionSettings* text = Text();
    fAASlider->SetEnabled(text != nullptr);
    fAATargetField->Menu()->SetEnabled(text != nullptr);
    if (text != nullptr) {
        fAASlider->SetPosition(text->aaValue);
        LabelAASlider();
        fAATargetField->Menu()->ItemAt(text->aaTarget - kAATargetChart)->SetMarked(true);
    }
    fColors->SetValue(fTarget->color != nullptr ? fTarget->color(*Chart()) : fNoTargetColor);
    ShowInPreview(fColors->ValueAsColor());
}

void ChartColorTab::LabelAASlider()
{
    fAASlider->SetLabel(PercentLabel(Tr("Antialiasing"), fAASlider->Position()).c_str());
    fAASlider->Invalidate();
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
    if (fTarget != kTargets) {
        fColors->SetValue(fNoTargetColor);
        fTarget = kTargets;
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
