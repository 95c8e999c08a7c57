// SPDX-License-Identifier: MIT
#include "src/app/AboutWindow.h"

#include "kits/application/Message.h"
#include "kits/application/Roster.h"
#include "kits/interface/Button.h"
#include "kits/interface/Fields.h"
#include "kits/storage/Entry.h"
#include "kits/support/TypeConstants.h"
#include "src/app/AboutFiles.h"
#include "src/support/Qel.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr float kWidth = 400;
constexpr float kHeight = 220;
constexpr float kMargin = 20;
constexpr float kTitleSize = 30;
constexpr float kTextSize = 13;
constexpr rgb_color kHigh{0, 100, 240, 255};
constexpr rgb_color kLow{65, 140, 215, 255};
constexpr rgb_color kText{255, 255, 255, 255};

rgb_color Between(rgb_color from, rgb_color to, float place)
{
    auto mix = [place](uint8 a, uint8 b) { return static_cast<uint8>(std::lround(a + (b - a) * place)); };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue), 255};
}

BFont TextFont(float size, bool bold)
{
    BFont font(bold ? be_bold_font : be_plain_font);
    font.SetSize(size);
    return font;
}

} // namespace

AboutWindow::AboutWindow(BRect frame, AboutWindow** ownerSlot)
    : BWindow(frame, Tr("About Qel"), B_MODAL_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE)
    , fOwnerSlot(ownerSlot)
    , fView(new AboutView(BRect(0, 0, frame.Width(), frame.Height()), this))
{
    Lock();
    AddChild(fView);
    fView->MakeFocus();
    Unlock();
}

AboutWindow::~AboutWindow()
{
    ClearOwnerSlot();
}

bool AboutWindow::QuitRequested()
{
    ClearOwnerSlot();
    return true;
}

void AboutWindow::ClearOwnerSlot()
{
    // The slot may already hold the next about window.
    if (fOwnerSlot != nullptr && *fOwnerSlot == this)
        *fOwnerSlot = nullptr;
}

BRect AboutWindow::FrameOn(BRect screen)
{
    const float left = std::ceil(screen.right * 0.5f - kWidth / 2);
    const float top = std::ceil(screen.bottom / 3 - kHeight / 2);
    return BRect(left, top, left + kWidth, top + kHeight);
}

AboutView::AboutView(BRect frame, BWindow* window)
    : BView(frame, "AboutView", 0, B_WILL_DRAW | B_NAVIGABLE)
    , fButton(new BButton(BRect(0, 0, 10, 10), "Allright", Tr("Allright"), new BMessage(B_QUIT_REQUESTED),
                          B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW | B_NAVIGABLE))
    , fMailText(kMakerAddress)
    , fHomeText(kMakerHome)
{
    fButton->SetTarget(window);
    AddChild(fButton);
    fButton->ResizeToPreferred();
    const BRect button = fButton->Bounds();
    fButton->MoveTo(frame.Width() - button.Width() - frame.Width() / 20,
                    frame.Height() - button.Height() - frame.Height() / 20);
    SetViewColor(B_TRANSPARENT_32_BIT);
    SetHighColor(kHigh);
    SetLowColor(kLow);
    SetAccessibleName((std::string("Qel ") + kVersion + ", " + kits::Filled(Tr("E-mail: %1"), {fMailText}) + ", " +
                       kits::Filled(Tr("Home: %1"), {fHomeText}))
                          .c_str());
}

void AboutView::AllAttached()
{
    fButton->SetViewColor(200, 200, 200, 255);
}

void AboutView::Draw(BRect /*update*/)
{
    const BRect bounds = Bounds();
    for (float y = 0; y <= bounds.bottom; ++y) {
        SetHighColor(Between(kLow, kHigh, y / bounds.bottom));
        StrokeLine(BPoint(0, y), BPoint(bounds.right, y));
    }

    SetDrawingMode(B_OP_OVER);
    SetHighColor(kText);
    font_height height;
    BFont font = TextFont(kTitleSize, true);
    font.GetHeight(&height);
    SetFont(&font);
    const font_height titleHeight = height;
    font = TextFont(kTextSize, false);
    font.GetHeight(&height);
    // A button in a large font needs more room, so the lines move closer together.
    constexpr float kGaps = 8 + 2 + 10 + 2 + 10 + 4 + 4;
    constexpr float kLines = 6;
    const float room =
        fButton->Frame().top - 1 - titleHeight.ascent - titleHeight.descent - kLines * (height.ascent + height.descent);
    const float part = std::clamp(room / kGaps, 0.0f, 1.0f);
    BPoint place(kMargin, std::floor(8 * part) + titleHeight.ascent);
    DrawString("Qel", place);
    place.y += titleHeight.descent;

    SetFont(&font);
    auto next = [&](float gap) {
        place.y += height.ascent + std::floor(gap * part);
        const BPoint line = place;
        place.y += height.descent;
        return line;
    };
    DrawString(kits::Filled(Tr("Version %1 x86"), {kVersion}).c_str(), next(2));
    DrawString(Tr("Charts of what this machine is doing."), next(10));
    DrawString(kits::Filled(Tr("Made by %1."), {kMakerName}).c_str(), next(2));
    DrawString(Tr("Send your bug reports & comments to:"), next(10));
    fMailRect = DrawLine(kits::Filled(Tr("E-mail: %1"), {fMailText}).c_str(), next(4), Line::kMail);
    fHomeRect = DrawLine(kits::Filled(Tr("Home: %1"), {fHomeText}).c_str(), next(4), Line::kHome);

    SetDrawingMode(B_OP_COPY);
    SetHighColor(kHigh);
}

BRect AboutView::DrawLine(const char* text, BPoint where, Line line)
{
    font_height height;
    GetFontHeight(&height);
    DrawString(text, where);
    const BRect rect(where.x, where.y - height.ascent, where.x + StringWidth(text), where.y + height.descent);
    if (IsFocus() && line == fChosen)
        StrokeRect(BRect(rect.left - 3, rect.top - 1, rect.right + 3, rect.bottom + 1));
    return rect;
}

AboutView::Line AboutView::LineAt(BPoint where) const
{
    return fMailRect.Contains(where) ? Line::kMail : fHomeRect.Contains(where) ? Line::kHome : Line::kNone;
}

void AboutView::MouseDown(BPoint where)
{
    const BMessage* message = Window()->CurrentMessage();
    const int32 clicks = message != nullptr ? kits::kClicksField.Get(*message) : 1;
    const Line line = LineAt(where);
    if (line == Line::kNone)
        return;
    if (clicks >= 2)
        OpenLine(line);
    else
        DragLine(line);
}

void AboutView::DragLine(Line line)
{
    const char* text = line == Line::kMail ? fMailText : fHomeText;
    BMessage message(B_MIME_TYPE);
    kits::kPlainTextField.Add(&message, text);
    DragMessage(&message, line == Line::kMail ? fMailRect : fHomeRect);
}

void AboutView::OpenLine(Line line)
{
    entry_ref ref;
    const status_t status =
        line == Line::kMail ? WriteMailFile(kMailFile, &ref) : WriteBookmarkFile(kBookmarkFile, &ref);
    if (status == B_OK)
        be_roster->Launch(&ref);
    else
        beep();
}

void AboutView::KeyDown(const char* bytes, int32 count)
{
    switch (bytes[0]) {
    case B_UP_ARROW:
    case B_DOWN_ARROW:
        fChosen = fChosen == Line::kMail ? Line::kHome : Line::kMail;
        Invalidate();
        break;
    case B_ENTER:
    case B_SPACE:
        OpenLine(fChosen);
        break;
    case B_ESCAPE:
        Window()->PostMessage(B_QUIT_REQUESTED);
        break;
    default:
        BView::KeyDown(bytes, count);
        break;
    }
}
