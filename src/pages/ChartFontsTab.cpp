// SPDX-License-Identifier: MIT
#include "src/pages/ChartFontsTab.h"

#include "kits/interface/ListView.h"
#include "kits/interface/NumberControl.h"
#include "kits/interface/ScrollView.h"
#include "kits/interface/Slider.h"
#include "src/chart/ChartView.h"
#include "src/pages/FontSample.h"
#include "src/pages/PageControls.h"
#include "src/support/MessageCodes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

/// A caption whose font the page edits. The target "< none >" has no text and no setter.
struct FontTarget {
    uint32 code;
    const char* label;
    CaptionSettings ChartSettings::*text = nullptr;
    void (ChartView::*setFont)(const FFont* font) = nullptr;
};

namespace {

constexpr FontTarget kTargets[] = {
    {MSG_FONT_TARGET_NONE, TrLater("< none >")},
    {MSG_FONT_TARGET_VALUE, TrLater("Value"), &ChartSettings::value, &ChartView::SetValueFont},
    {MSG_FONT_TARGET_TITLE, TrLater("Title"), &ChartSettings::title, &ChartView::SetTitleFont},
};

constexpr float kGap = 5;
constexpr float kSmallestSample = 48;
/// The families' fraction of the page's width; the styles have the rest.
constexpr float kFamiliesPart = 0.58f;

void SaveFonts(const ChartView& chart, BMessage* into)
{
    kValueFontField.Remove(into);
    kTitleFontField.Remove(into);
    kValueFontField.Add(into, chart.Settings().value.font);
    kTitleFontField.Add(into, chart.Settings().title.font);
}

/// Selects the row with this text, or none.
void SelectText(BListView* list, const char* text)
{
    list->DeselectAll();
    for (int32 i = 0; const BListItem* item = list->ItemAt(i); i++) {
        if (std::strcmp(item->Text(), text) == 0) {
            list->Select(i);
            list->ScrollToSelection();
            return;
        }
    }
}

const char* SelectedText(const BListView* list)
{
    const BListItem* item = list->ItemAt(list->CurrentSelection());
    return item != nullptr ? item->Text() : nullptr;
}

BListView* MakeList(const char* name, uint32 code)
{
    auto* list = new BListView(kSomewhere, "");
    list->SetAccessibleName(name);
    list->SetSelectionMessage(new BMessage(code));
    return list;
}

} // namespace

ChartFontsTab::ChartFontsTab(ChartView* chart)
    : ChartPage(TrLater("Fonts"), chart, SaveFonts)
    , fFont(chart->Settings().value.font)
    , fTarget(&kTargets[0])
    , fLastTarget(&kTargets[1])
{
    fFont.SetMask(FFont::kFamilyAndStyle | FFont::kSize);
    // A caption that grows may have to move.
    kValueCoordField.Add(&Snapshot(), chart->Settings().value.where);
    kTitleCoordField.Add(&Snapshot(), chart->Settings().title.where);

    fTargetField = AddMenuField(this, Tr("Target:"), kTargets, 0);
    fFamilies = MakeList(Tr("Families"), MSG_FONT_FAMILY);
    fFamiliesScroll = new BScrollView("", fFamilies, B_FOLLOW_NONE, 0, false, true);
    AddChild(fFamiliesScroll);
    fStyles = MakeList(Tr("Styles"), MSG_FONT_STYLE);
    fStylesScroll = new BScrollView("", fStyles, B_FOLLOW_NONE, 0, false, true);
    AddChild(fStylesScroll);

    constexpr auto kSmallest = static_cast<int32>(kMinFontSize);
    constexpr auto kLargest = static_cast<int32>(kMaxFontSize);
    fSize = AddSlider(this, Tr("Size"), MSG_FONT_SIZE, kSmallest, kLargest, std::to_string(kSmallest).c_str(),
                      std::to_string(kLargest).c_str(), 0);
    fSizeNumber = new BNumberControl(kSomewhere, Tr("Size"), new BMessage(MSG_FONT_SIZE_NUMBER), kSmallest, kLargest);
    AddChild(fSizeNumber);
    fSample = new FontSample(kSomewhere);
    AddChild(fSample);
    FillFamilies();
}

void ChartFontsTab::AllAttached()
{
    fIsShownAgain = true;
    ChartPage::AllAttached();
    fIsShownAgain = false;
    // A revert while the page was hidden may have made the sample taller.
    MinimumSizeChanged();
}

void ChartFontsTab::MessageReceived(BMessage* message)
{
    if (const FontTarget* target = FindChoice(kTargets, message->what)) {
        ChooseTarget(target);
        return;
    }
    switch (message->what) {
    case MSG_FONT_FAMILY:
        FamilyChosen();
        break;
    case MSG_FONT_STYLE:
        StyleChosen();
        break;
    case MSG_FONT_SIZE:
        SizeChosen(fSize->Value());
        break;
    case MSG_FONT_SIZE_NUMBER:
        SizeChosen(fSizeNumber->Value());
        break;
    default:
        ChartPage::MessageReceived(message);
    }
}

void ChartFontsTab::FillFamilies()
{
    const int32 count = count_font_families();
    for (int32 i = 0; i < count; i++) {
        font_family family;
        if (get_font_family(i, &family) == B_OK)
            fFamilies->AddItem(new BStringItem(family));
    }
}

void ChartFontsTab::FillStyles(const font_family family)
{
    fStyles->MakeEmpty();
    font_style style;
    const int32 count = count_font_styles(family);
    for (int32 i = 0; i < count; i++)
        if (get_font_style(family, i, &style) == B_OK)
            fStyles->AddItem(new BStringItem(style));
}

/// Takes over those properties of a font that the page offers, and fills all controls from it.
void ChartFontsTab::ShowFont(const BFont& font)
{
    const FFont whole(font);
    fFont.UpdateFrom(&whole, fFont.Mask());
    font_family family = "";
    font_style style = "";
    kits::GetListedStyle(fFont, &family, &style);
    SelectText(fFamilies, family);
    FillStyles(family);
    SelectText(fStyles, style);
    ShowSize();
    ShowSample();
}

const FFont& ChartFontsTab::FontOf(const FontTarget* target) const
{
    return (Chart()->Settings().*target->text).font;
}

void ChartFontsTab::ChooseTarget(const FontTarget* target)
{
    if (Chart() == nullptr)
        return;
    fTarget = target;
    if (fTarget->text == nullptr)
        return;
    fLastTarget = fTarget;
    ShowFont(FontOf(fTarget));
}

void ChartFontsTab::FamilyChosen()
{
    const char* selected = SelectedText(fFamilies);
    if (selected == nullptr)
        return;
    font_family family = "";
    font_style style = "";
    const char* before = SelectedText(fStyles);
    const std::string styleBefore = before != nullptr ? before : "";
    std::strncpy(family, selected, B_FONT_FAMILY_LENGTH);
    FillStyles(family);
    SelectText(fStyles, styleBefore.c_str());
    if (fStyles->CurrentSelection() < 0) {
        kits::GetRegularStyle(family, &style);
        SelectText(fStyles, style);
    }
    const char* chosen = SelectedText(fStyles);
    fFont.SetFamilyAndStyle(family, chosen != nullptr ? chosen : "");
    FontChanged();
}

void ChartFontsTab::StyleChosen()
{
    // The default font may have a family that is shown as another one.
    const char* family = SelectedText(fFamilies);
    const char* style = SelectedText(fStyles);
    if (family == nullptr || style == nullptr)
        return;
    fFont.SetFamilyAndStyle(family, style);
    FontChanged();
}

void ChartFontsTab::SizeChosen(int32 size)
{
    fFont.SetSize(static_cast<float>(size));
    ShowSize();
    FontChanged();
}

void ChartFontsTab::ShowSize()
{
    const auto size = static_cast<int32>(std::lround(fFont.Size()));
    fSize->SetValue(size);
    fSizeNumber->SetValue(size);
    fSize->SetLabel(kits::Filled(Tr("Size %1"), {std::to_string(fSize->Value())}).c_str());
}

void ChartFontsTab::ShowSample()
{
    fSample->SetSample(fFont);
    if (std::abs(SampleHeight() - fSample->Bounds().Height()) < 0.5f)
        return;
    MinimumSizeChanged();
    Rerender();
}

float ChartFontsTab::SampleHeight() const
{
    return std::max(kSmallestSample, fSample->HeightForSample());
}

void ChartFontsTab::FontChanged()
{
    ShowSample();
    if (Chart() == nullptr || fTarget->text == nullptr)
        return;
    FFont font(FontOf(fTarget));
    fFont.UpdateTo(static_cast<BFont*>(&font), FFont::kAll);
    (Chart()->*fTarget->setFont)(&font);
}

void ChartFontsTab::GetState()
{
    fTargetField->Menu()->ItemAt(0)->SetMarked(true);
    fTarget = &kTargets[0];
    if (Chart() != nullptr && !fIsShownAgain)
        ShowFont(FontOf(fLastTarget));
    else
        ShowFont(fFont);
}

void ChartFontsTab::Rerender()
{
    ChartPage::Rerender();
    const float width = Bounds().Width() - 2 * kGap;
    const float sliderHeight = fSize->Bounds().Height();
    const float fieldHeight = fTargetField->Bounds().Height();
    const float sampleHeight = SampleHeight();
    const float numberWidth = fSizeNumber->Bounds().Width();
    const float numberHeight = fSizeNumber->Bounds().Height();
    const float sampleTop = Bounds().bottom - kGap - sampleHeight;
    const float sliderTop = sampleTop - kGap - sliderHeight;
    const float listTop = kGap + fieldHeight + kGap;
    // A window that will grow for a larger sample may still be too small.
    const float listHeight = std::max(sliderTop - kGap - listTop, 0.0f);
    const float familiesWidth = std::floor(width * kFamiliesPart);

    fTargetField->MoveTo(kGap, kGap);
    fTargetField->ResizeTo(familiesWidth, fieldHeight);
    fTargetField->SetDivider(fTargetField->StringWidth(fTargetField->Label()) + kBesideLabel);
    fFamiliesScroll->MoveTo(kGap, listTop);
    fFamiliesScroll->ResizeTo(familiesWidth, listHeight);
    fStylesScroll->MoveTo(kGap + familiesWidth + kGap, listTop);
    fStylesScroll->ResizeTo(width - familiesWidth - kGap, listHeight);
    fSize->MoveTo(kGap, sliderTop);
    fSize->ResizeTo(width - numberWidth - 1 - kBesideLabel, sliderHeight);
    fSizeNumber->MoveTo(kGap + width - numberWidth, sliderTop + std::round((sliderHeight - numberHeight) / 2));
    fSample->MoveTo(kGap, sampleTop);
    fSample->ResizeTo(width, sampleHeight);
    // A taller sample leaves the lists less room.
    fFamilies->ScrollToSelection();
    fStyles->ScrollToSelection();
}

void ChartFontsTab::GetMinimumSize(float* width, float* height)
{
    const BPoint target = PreferredSizeOf(fTargetField);
    const BPoint slider = PreferredSizeOf(fSize);
    const BPoint number = PreferredSizeOf(fSizeNumber);
    constexpr float kListAtLeast = 56;
    *width = std::max(slider.x + number.x + 1 + kBesideLabel, target.x / kFamiliesPart) + 2 * kGap;
    *height = target.y + std::max(slider.y, number.y) + SampleHeight() + kListAtLeast + 5 * kGap;
}
