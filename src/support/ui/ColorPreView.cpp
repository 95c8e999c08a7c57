// SPDX-License-Identifier: MIT
#include "src/support/ui/ColorPreView.h"

#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/interface/Bitmap.h"
#include "kits/interface/ColorControl.h"
#include "kits/interface/Fields.h"
#include "kits/interface/MenuItem.h"
#include "kits/interface/Screen.h"
#include "kits/interface/Window.h"
#include "src/support/ColorMessage.h"
#include "src/support/MessageCodes.h"
#include "src/support/Tr.h"

#include <algorithm>
#include <cstdio>
#include <memory>

ColorPreView::ColorPreView(BRect frame, BColorControl* control)
    : BBox(frame, nullptr, B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE_JUMP | B_NAVIGABLE | B_FRAME_EVENTS, B_PLAIN_BORDER)
    , fMenu(Tr("Color"), false, false)
    , fPickItem(new BMenuItem(Tr("Pick desktop color"), nullptr))
    , fControl(control)
{
    fMenu.AddItem(fPickItem);
    SetAccessibleName(Tr("Color"));
    SetToolTip(
        Tr("Drag the color onto a curve, a caption or the background of a chart, or onto the desktop, which keeps "
           "it. Ctrl+C copies it."));
}

void ColorPreView::AttachedToWindow()
{
    BBox::AttachedToWindow();
    Invalidate();
}

void ColorPreView::Draw(BRect)
{
    if (!IsFocus())
        return;
    // A ring of two colours is visible on any colour.
    BRect ring = Bounds();
    for (const rgb_color color : {ui_color(B_KEYBOARD_NAVIGATION_COLOR), ui_color(B_DOCUMENT_BACKGROUND_COLOR)}) {
        ring.InsetBy(1, 1);
        SetHighColor(color);
        StrokeRect(ring);
    }
}

void ColorPreView::MouseDown(BPoint where)
{
    const BMessage* current = Window()->CurrentMessage();
    const int32 buttons = current != nullptr ? kits::kButtonsField.Get(*current) : 0;
    const BPoint screenPoint = ConvertToScreen(where);
    if ((buttons & static_cast<int32>(B_PRIMARY_MOUSE_BUTTON)) != 0)
        DragColor();
    else if ((buttons & static_cast<int32>(B_SECONDARY_MOUSE_BUTTON)) != 0)
        OpenMenu(screenPoint, false);
    else if ((buttons & static_cast<int32>(B_TERTIARY_MOUSE_BUTTON)) != 0)
        OpenMenu(screenPoint, true);
}

void ColorPreView::ContextMenuRequested(BPoint where)
{
    OpenMenu(ConvertToScreen(where), true);
}

std::string ColorPreView::AccessibleValue() const
{
    const rgb_color color = ViewColor();
    char text[8];
    std::snprintf(text, sizeof(text), "#%02x%02x%02x", color.red, color.green, color.blue);
    return text;
}

void ColorPreView::DragColor()
{
    const rgb_color color = ViewColor();
    BMessage message;
    MakeColorMessage(&message, color);
    auto bitmap = std::make_unique<BBitmap>(BRect(0, 0, 20, 20), B_RGB32);
    const uint32 word = uint32(color.alpha) << 24 | uint32(color.red) << 16 | uint32(color.green) << 8 | color.blue;
    std::fill_n(static_cast<uint32*>(bitmap->Bits()), bitmap->BitsLength() / 4, word);
    DragMessage(&message, bitmap.release(), BPoint(-10, -10), nullptr);
}

void ColorPreView::OpenMenu(BPoint screenPoint, bool openAnyway)
{
    if (fMenu.Go(screenPoint, false, openAnyway) == fPickItem)
        BScreen(Window()).AskDesktopColor(BMessage(MSG_DESKTOP_COLOR), BMessenger(this));
}

bool ColorPreView::CopyRequested(BMessage* message)
{
    MakeColorMessage(message, ViewColor());
    return true;
}

bool ColorPreView::PasteRequested(BPoint* where)
{
    *where = Bounds().LeftTop();
    return true;
}

void ColorPreView::MessageReceived(BMessage* message)
{
    rgb_color color;
    const bool isAnswer = message->what == MSG_DESKTOP_COLOR && kits::kColorField.Find(*message, &color);
    if (isAnswer || (message->WasDropped() && FindColorMessage(*message, &color))) {
        fControl->SetValue(color);
        Window()->PostMessage(MSG_COLOR_CHANGED, Parent());
    } else {
        BBox::MessageReceived(message);
    }
}
