// SPDX-License-Identifier: MIT
#include "src/prefs/PrefsButtonView.h"

#include "kits/application/Message.h"
#include "kits/interface/Button.h"
#include "src/prefs/PrefsLayout.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"

PrefsButtonView::PrefsButtonView(BRect frame)
    : BView(frame, "", B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, B_WILL_DRAW | B_FRAME_EVENTS)
    , fCancel(MakeButton(Tr("Cancel"), MSG_PREFS_CANCEL))
    , fRevert(MakeButton(Tr("Revert"), MSG_PREFS_REVERT))
    , fRevertAll(MakeButton(Tr("Revert all"), MSG_PREFS_REVERT_ALL))
{
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
}

void PrefsButtonView::AllAttached()
{
    // They stand in the opposite order of their creation.
    fRevertAll->PrecedeInTabOrder(fCancel);
    fRevert->PrecedeInTabOrder(fCancel);
}

BButton* PrefsButtonView::MakeButton(const char* label, uint32 code)
{
    auto* button =
        new BButton(BRect(0, 0, 5, 5), "", label, new BMessage(code), B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE);
    AddChild(button);
    return button;
}

void PrefsButtonView::FrameResized(float, float)
{
    Rerender();
}

void PrefsButtonView::GetPreferredSize(float* width, float* height)
{
    *width = 100;
    *height = fCancel->Bounds().Height() * 1.2f;
}

void PrefsButtonView::Rerender()
{
    for (BButton* button : {fCancel, fRevert, fRevertAll})
        button->ResizeToPreferred();

    const float width = Bounds().Width();
    const float y = (Bounds().Height() - fCancel->Bounds().Height()) * 0.5f;
    const float gap =
        (width * 0.8f - fCancel->Bounds().Width() - fRevert->Bounds().Width() - fRevertAll->Bounds().Width()) * 0.25f;
    float x = width * 0.18f + 2 * gap;
    fRevertAll->MoveTo(x, y);
    x += fRevertAll->Bounds().Width() + gap;
    fRevert->MoveTo(x, y);
    x += fRevert->Bounds().Width() + gap;
    fCancel->MoveTo(x, y);
}

float PrefsButtonView::MinimumWidth()
{
    float sum = 0;
    for (BButton* button : {fCancel, fRevert, fRevertAll})
        sum += PreferredSizeOf(button).x + 1;
    return sum / 0.8f;
}
