// SPDX-License-Identifier: MIT
#include "kits/interface/Dragger.h"

#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/Drag.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/support/Identity.h"

#include <QImage>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

/// A hand trembles: a move is a drag only beyond this distance.
constexpr float kSlack = 3;

/// Returns the picture of the view and its children, without the handle; transparent where the view is.
std::unique_ptr<BBitmap> PictureOf(const BView& view, QWidget* handle)
{
    QWidget* const widget = kits::ViewWidget(&view);
    auto bitmap = std::make_unique<BBitmap>(view.Bounds(), B_RGBA32);
    if (widget == nullptr || !bitmap->IsValid())
        return nullptr;
    const QRect rect = kits::ToQRect(view.Bounds());
    QImage image(rect.size(), QImage::Format_ARGB32);
    image.fill(0);
    const bool wasShown = handle != nullptr && !handle->isHidden();
    if (wasShown)
        handle->setUpdatesEnabled(false);
    widget->render(&image, QPoint(), QRegion(rect), QWidget::DrawChildren);
    if (wasShown)
        handle->setUpdatesEnabled(true);
    auto* words = static_cast<uint32*>(bitmap->Bits());
    for (int y = 0; y < image.height(); y++) {
        const auto* row = reinterpret_cast<const uint32*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); x++, words++)
            *words = row[x] >> 24 == 0 ? B_TRANSPARENT_MAGIC_RGBA32 : row[x];
    }
    return bitmap;
}

float Distance(BPoint a, BPoint b)
{
    return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y));
}

uint8 Mix(uint8 from, uint8 to, int percent)
{
    return static_cast<uint8>(from + (to - from) * percent / 100);
}

} // namespace

BDragger::BDragger(BRect frame, BView* target, uint32 resizingMode, uint32 flags)
    : BView(frame, "_dragger_", resizingMode, flags)
    , fTarget(target)
{
}

BDragger::~BDragger() = default;

void BDragger::WidgetCreated(QWidget* widget)
{
    widget->setCursor(Qt::OpenHandCursor);
}

void BDragger::SetPopUp(std::unique_ptr<BPopUpMenu> menu)
{
    fPopUp = std::move(menu);
}

void BDragger::SetViewColor(rgb_color color)
{
    if (color == ViewColor())
        return;
    BView::SetViewColor(color);
    Invalidate();
}

rgb_color BDragger::MarkColor() const
{
    const rgb_color back = ViewColor();
    const int brightness = (299 * back.red + 587 * back.green + 114 * back.blue) / 1000;
    const uint8 far = brightness < 128 ? 255 : 0;
    const int percent = fHovered ? 100 : 55;
    return make_color(Mix(back.red, far, percent), Mix(back.green, far, percent), Mix(back.blue, far, percent));
}

void BDragger::Draw(BRect)
{
    const BRect bounds = Bounds();
    BRect inner = bounds;
    inner.InsetBy(1, 1);
    SetDrawingMode(B_OP_COPY);
    SetLowColor(ViewColor());
    FillRect(bounds, B_SOLID_LOW);
    if (ViewColor() == B_TRANSPARENT_COLOR) {
        // On any ground, one of the two colours stands out.
        SetHighColor(0, 0, 0);
        StrokeRect(bounds);
        SetHighColor(255, 255, 255);
    } else {
        SetHighColor(MarkColor());
    }
    StrokeRect(inner);
    inner.InsetBy(2, 2);
    if (inner.IsValid())
        FillRect(inner);
}

void BDragger::MouseDown(BPoint where)
{
    const BMessage* message = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const int32 buttons = message != nullptr ? kits::kButtonsField.Get(*message) : 0;
    fPressed = static_cast<uint32>(buttons) == B_PRIMARY_MOUSE_BUTTON;
    fPressedAt = where;
    if (!fPressed)
        ContextMenuRequested(where);
}

void BDragger::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage)
{
    const bool hovered = transit != B_EXITED_VIEW && dragMessage == nullptr;
    if (hovered != fHovered) {
        fHovered = hovered;
        Invalidate();
    }
    if (!fPressed || dragMessage != nullptr)
        return;
    uint32 buttons = 0;
    GetMouse(nullptr, &buttons);
    if (buttons != B_PRIMARY_MOUSE_BUTTON) {
        fPressed = false;
    } else if (transit == B_EXITED_VIEW || Distance(where, fPressedAt) > kSlack) {
        fPressed = false;
        StartDrag(fPressedAt);
    }
}

void BDragger::MouseUp(BPoint)
{
    fPressed = false;
}

void BDragger::ContextMenuRequested(BPoint where)
{
    if (fPopUp != nullptr)
        fPopUp->Go(ConvertToScreen(where), true, true, true);
}

void BDragger::StartDrag(BPoint where)
{
    BMessage archive(B_ARCHIVED_OBJECT);
    if (fTarget->Archive(&archive, true) != B_OK)
        return;
    // For the shelf that takes it.
    archive.AddMessenger(kits::Drag::kSourceField, BMessenger(fTarget));
    archive.AddString(kits::Drag::kDragField, fIdentity.empty() ? kits::NewIdentity() : fIdentity);
    const BPoint offset = fTarget->ConvertFromScreen(ConvertToScreen(where));
    std::unique_ptr<BBitmap> picture = PictureOf(*fTarget, kits::ViewWidget(this));
    if (picture != nullptr)
        fTarget->DragMessage(&archive, picture.release(), offset, fTarget);
    else
        fTarget->DragMessage(&archive, fTarget->Bounds(), fTarget);
}
