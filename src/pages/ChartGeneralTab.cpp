// SPDX-License-Identifier: MIT
#include "src/pages/ChartGeneralTab.h"

#include "kits/interface/CheckBox.h"
#include "kits/interface/Slider.h"
#include "kits/interface/TextControl.h"
#include "src/chart/ChartView.h"
#include "src/pages/PageControls.h"
#include "src/support/MessageCodes.h"

#include <algorithm>

namespace {

constexpr int32 kSkipSteps = 50;

/// The field of MSG_CHART_TYPE; that of MSG_GAUGE_ORIENTATION is kVerticalField.
const kits::Field<int32> kTypeField("Type", kSolidChart, kPointChart);

/// Places in the layout, as fractions of the page's width.
constexpr float kLeftColumn = 0.02f;
constexpr float kRightColumn = 0.32f;
constexpr float kRightWidth = 0.66f;
constexpr float kDividerPart = 2.7f;

struct Switch {
    uint32 code;
    const char* label;
    bool (*isOn)(const ChartSettings& settings);
    void (ChartView::*set)(bool on);
};

constexpr Switch kSwitches[] = {
    {MSG_SHOW_VALUE, TrLater("Show Value"), [](const ChartSettings& settings) { return settings.value.shown; },
     &ChartView::SetShowValue},
    {MSG_SHOW_TITLE, TrLater("Show Title"), [](const ChartSettings& settings) { return settings.title.shown; },
     &ChartView::SetShowTitle},
    {MSG_SHOW_BORDER, TrLater("Draw Border"), [](const ChartSettings& settings) { return settings.showBorder; },
     &ChartView::SetShowBorder},
    {MSG_LOCK_BG_COLOR, TrLater("BgColor = Desktop"),
     [](const ChartSettings& settings) { return settings.lockBgColor; }, &ChartView::SetLockBgColor},
};

/// "Refresh at every 3rd sysinfo sample". From the fourth on, the ending is always "th".
std::string SkipLabel(const char* label, int16 skip)
{
    const char* const counts[] = {"", Tr("2nd "), Tr("3rd ")};
    const std::string count = skip < 3 ? counts[skip] : kits::Filled(Tr("%1th "), {std::to_string(skip + 1)});
    return kits::Filled(label, {count});
}

BMenuItem* MakeTypeItem(const char* label, int32 type)
{
    auto* message = new BMessage(MSG_CHART_TYPE);
    kTypeField.Add(message, type);
    return new BMenuItem(label, message);
}

BMenuItem* MakeOrientationItem(const char* label, bool vertical)
{
    auto* message = new BMessage(MSG_GAUGE_ORIENTATION);
    kVerticalField.Add(message, vertical);
    return new BMenuItem(label, message);
}

/// Gap between the rows on the right, which have room of their own above their labels; pixels.
constexpr float kSmallestRowGap = 1;

} // namespace

ChartGeneralTab::ChartGeneralTab(ChartView* chart)
    : ChartPage(TrLater("General"), chart, &ChartView::SaveGeneralPrefsTo)
{
    fTitle = new BTextControl(kSomewhere, "", Tr("Title: "), chart->Title(), new BMessage(MSG_TITLE));
    fTitle->SetModificationMessage(new BMessage(MSG_TITLE));
    for (const Switch& one : kSwitches) {
        auto* box = new BCheckBox(kSomewhere, "", Tr(one.label), new BMessage(one.code));
        AddChild(box);
        fSwitches.push_back(box);
    }
    MakeModeField();
    AddChild(fTitle);
    fPageSize = AddSlider(this, Tr("Page size (%)"), MSG_PAGE_SIZE, 0, 100, "0", Tr("Scrolling"), 10);
    fRefreshSkip = AddSlider(this, "", MSG_REFRESH_SKIP, 0, kSkipSteps, "0", "50", 10);
    fValueSkip = AddSlider(this, "", MSG_VALUE_SKIP, 0, kSkipSteps, "0", "50", 10);
}

void ChartGeneralTab::MakeModeField()
{
    auto* types = new BMenu(Tr("Chart"));
    types->SetRadioMode(true);
    types->AddItem(MakeTypeItem(Tr("Solid"), kSolidChart));
    types->AddItem(MakeTypeItem(Tr("Line"), kLineChart));
    types->AddItem(MakeTypeItem(Tr("Point"), kPointChart));
    auto* orientations = new BMenu(Tr("Gauge"));
    orientations->SetRadioMode(true);
    orientations->AddItem(MakeOrientationItem(Tr("Horizontal"), false));
    orientations->AddItem(MakeOrientationItem(Tr("Vertical"), true));

    auto* modes = new BPopUpMenu("");
    fChartItem = new BMenuItem(types, new BMessage(MSG_CHART_TYPE));
    fGaugeItem = new BMenuItem(orientations, new BMessage(MSG_GAUGE_ORIENTATION));
    modes->AddItem(fChartItem);
    modes->AddItem(fGaugeItem);
    fChartItem->SetMarked(Chart()->Settings().mode == kChartMode);
    fGaugeItem->SetMarked(Chart()->Settings().mode == kGaugeMode);
    fMode = new BMenuField(kSomewhere, "", Tr("Mode:"), modes);
    AddChild(fMode);
}

void ChartGeneralTab::MessageReceived(BMessage* message)
{
    if (Chart() == nullptr) {
        ChartPage::MessageReceived(message);
        return;
    }
    if (const Switch* one = FindChoice(kSwitches, message->what)) {
        (Chart()->*one->set)(fSwitches[static_cast<size_t>(one - kSwitches)]->Value() == B_CONTROL_ON);
        return;
    }
    switch (message->what) {
    case MSG_CHART_TYPE:
        ChartTypeChosen(*message);
        break;
    case MSG_GAUGE_ORIENTATION:
        OrientationChosen(*message);
        break;
    case MSG_PAGE_SIZE:
        Chart()->SetPageSize(fPageSize->Position());
        // Spelled differently from GetState().
        fPageSize->SetLabel(PercentLabel(Tr("PageSize"), fPageSize->Position()).c_str());
        break;
    case MSG_REFRESH_SKIP:
        SkipChanged(fRefreshSkip, Tr("Refresh at every %1sysinfo sample"), &ChartView::SetSkipValue);
        break;
    case MSG_VALUE_SKIP:
        SkipChanged(fValueSkip, Tr("Draw value at every %1refresh"), &ChartView::SetValueSkipValue);
        break;
    case MSG_TITLE:
        Chart()->SetTitle(fTitle->Text());
        break;
    default:
        ChartPage::MessageReceived(message);
    }
}

void ChartGeneralTab::ChartTypeChosen(const BMessage& message)
{
    Chart()->SetMode(kChartMode);
    Chart()->SetChartType(static_cast<int16>(kTypeField.Get(message)));
    fChartItem->SetMarked(true);
}

void ChartGeneralTab::OrientationChosen(const BMessage& message)
{
    Chart()->SetMode(kGaugeMode);
    if (bool vertical = false; kVerticalField.Find(message, &vertical))
        Chart()->SetVertical(vertical);
    fGaugeItem->SetMarked(true);
}

void ChartGeneralTab::SkipChanged(BSlider* slider, const char* label, void (ChartView::*set)(int16 skip))
{
    const auto skip = static_cast<int16>(slider->Position() * kSkipSteps);
    (Chart()->*set)(skip);
    slider->SetLabel(SkipLabel(label, skip).c_str());
}

void ChartGeneralTab::GetState()
{
    const ChartView* chart = Chart();
    if (chart == nullptr)
        return;
    fTitle->SetText(chart->Title());
    for (size_t i = 0; i < fSwitches.size(); i++)
        fSwitches[i]->SetValue(kSwitches[i].isOn(chart->Settings()));
    fPageSize->SetPosition(chart->Settings().pageSize);
    fPageSize->SetLabel(PercentLabel(Tr("Page size"), fPageSize->Position()).c_str());
    fRefreshSkip->SetPosition(static_cast<float>(1 + chart->Settings().skip) / kSkipSteps);
    PostToPage(this, MSG_REFRESH_SKIP);
    fValueSkip->SetPosition(static_cast<float>(1 + chart->Settings().valueSkip) / kSkipSteps);
    PostToPage(this, MSG_VALUE_SKIP);
    MarkMode();
}

void ChartGeneralTab::MarkMode()
{
    if (Chart()->Settings().mode == kChartMode) {
        const int16 type = Chart()->Settings().chartType;
        const int32 index = type == kLineChart ? 1 : type < kPointChart ? 0 : 2;
        fChartItem->Submenu()->ItemAt(index)->SetMarked(true);
        fChartItem->SetMarked(true);
    } else if (Chart()->Settings().mode == kGaugeMode) {
        fGaugeItem->Submenu()->ItemAt(Chart()->Settings().vertical ? 1 : 0)->SetMarked(true);
        fGaugeItem->SetMarked(true);
    }
}

void ChartGeneralTab::Rerender()
{
    ChartPage::Rerender();
    const float width = Bounds().Width();
    const float height = Bounds().Height();

    float gap = (height - 4 * fSwitches.front()->Bounds().Height()) / 5;
    float y = gap;
    for (BCheckBox* box : fSwitches) {
        box->MoveTo(width * kLeftColumn, y);
        box->ResizeTo(std::min(PreferredSizeOf(box).x, width * (kRightColumn - kLeftColumn) - kSmallestGap),
                      box->Bounds().Height());
        y += box->Bounds().Height() + gap;
    }

    const std::initializer_list<BView*> right = {fMode, fTitle, fPageSize, fRefreshSkip, fValueSkip};
    gap = height;
    for (const BView* view : right)
        gap -= view->Bounds().Height();
    gap /= 7;
    y = gap;
    for (BView* view : right) {
        view->MoveTo(width * kRightColumn, y);
        view->ResizeTo(width * kRightWidth, view->Bounds().Height());
        y += view->Bounds().Height() + gap;
    }
    fMode->SetDivider(width * kRightWidth / kDividerPart);
    fTitle->SetDivider(width * kRightWidth / kDividerPart);
}

void ChartGeneralTab::GetMinimumSize(float* width, float* height)
{
    float leftWidth = 0;
    float leftHeight = 5 * kSmallestGap;
    for (BCheckBox* box : fSwitches) {
        const BPoint size = PreferredSizeOf(box);
        leftWidth = std::max(leftWidth, box->NarrowestWidth() + kSmallestGap);
        leftHeight += size.y;
    }
    float rightWidth = std::max(FieldWidth(fMode, kDividerPart), FieldWidth(fTitle, kDividerPart));
    float rightHeight = 7 * kSmallestRowGap;
    for (BView* view : std::initializer_list<BView*>{fMode, fTitle, fPageSize, fRefreshSkip, fValueSkip})
        rightHeight += PreferredSizeOf(view).y;
    for (BSlider* slider : {fPageSize, fRefreshSkip, fValueSkip})
        rightWidth = std::max(rightWidth, PreferredSizeOf(slider).x);
    *width = std::max(leftWidth / (kRightColumn - kLeftColumn), rightWidth / kRightWidth);
    *height = std::max(leftHeight, rightHeight);
}
