// SPDX-License-Identifier: MIT
#include "kits/interface/Bitmap.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/WindowImpl.h"

#include <cmath>

namespace {

constexpr float kMaxExtent = 32766;

bool IsFinite(float x, float y)
{
    return std::isfinite(x) && std::isfinite(y);
}

} // namespace

namespace kits {

PixelRect ViewImpl::PixelsOf(const BRect& frame)
{
    const PixelRect pixels{ToPixel(frame.left), ToPixel(frame.top), ToPixel(frame.right) + 1,
                           ToPixel(frame.bottom) + 1};
    return {pixels.left, pixels.top, std::max(pixels.left, pixels.right), std::max(pixels.top, pixels.bottom)};
}

BPoint ViewImpl::Origin() const
{
    BPoint origin;
    for (const ViewImpl* impl = this; impl != nullptr; impl = impl->fParent != nullptr ? &Of(impl->fParent) : nullptr) {
        origin.x += static_cast<float>(impl->fPixelFrame.left);
        origin.y += static_cast<float>(impl->fPixelFrame.top);
    }
    return origin;
}

void ViewImpl::SetFrame(const BRect& frame)
{
    if (frame == fFrame)
        return;
    const PixelRect before = PixelFrame();
    const float dx = frame.Width() - fFrame.Width();
    const float dy = frame.Height() - fFrame.Height();
    const bool moved = frame.LeftTop() != fFrame.LeftTop();
    fFrame = frame;
    fPixelFrame = PixelsOf(frame);
    if (dx != 0 || dy != 0)
        for (const std::unique_ptr<BView>& child : fChildren)
            Of(child.get()).FollowParent(dx, dy);
    if (fWindow == nullptr)
        return;
    const PixelRect after = PixelFrame();
    if (fFlags & B_FULL_UPDATE_ON_RESIZE && (after.Width() != before.Width() || after.Height() != before.Height())) {
        InvalidateAll();
    } else {
        Invalidate({before.Width(), 0, after.Width(), after.Height()});
        Invalidate({0, before.Height(), after.Width(), after.Height()});
    }
    if (fFlags & B_FRAME_EVENTS) {
        fMovedHook = fMovedHook || moved;
        fResizedHook = fResizedHook || dx != 0 || dy != 0;
        if (fMovedHook || fResizedHook)
            UpdateQueue::Add(*this);
    }
    WidgetChanged();
}

void ViewImpl::FollowParent(float dx, float dy)
{
    BRect frame = fFrame;
    const auto follow = [](float& low, float& high, float delta, uint32 rule, uint32 highEdge, uint32 both,
                           uint32 middle) {
        if (rule == both) {
            high += delta;
        } else if (rule == highEdge) {
            low += delta;
            high += delta;
        } else if (rule == middle) {
            low += delta / 2;
            high += delta / 2;
        }
    };
    follow(frame.left, frame.right, dx, fMode & 0x07, B_FOLLOW_RIGHT, B_FOLLOW_LEFT_RIGHT, B_FOLLOW_H_CENTER);
    follow(frame.top, frame.bottom, dy, fMode & 0x70, B_FOLLOW_BOTTOM, B_FOLLOW_TOP_BOTTOM, B_FOLLOW_V_CENTER);
    SetFrame(frame);
}

} // namespace kits

BRect BView::Bounds() const
{
    return {0, 0, fImpl->fFrame.Width(), fImpl->fFrame.Height()};
}

BRect BView::Frame() const
{
    return fImpl->fFrame;
}

void BView::MoveTo(BPoint where)
{
    if (!IsFinite(where.x, where.y))
        return;
    const BRect& frame = fImpl->fFrame;
    fImpl->SetFrame({where.x, where.y, where.x + frame.Width(), where.y + frame.Height()});
}

void BView::ResizeTo(float width, float height)
{
    if (!IsFinite(width, height))
        return;
    const BPoint corner = fImpl->fFrame.LeftTop();
    fImpl->SetFrame({corner.x, corner.y, corner.x + std::clamp(width, -1.0F, kMaxExtent),
                     corner.y + std::clamp(height, -1.0F, kMaxExtent)});
}

void BView::SetResizingMode(uint32 mode)
{
    fImpl->fMode = mode;
}

uint32 BView::ResizingMode() const
{
    return fImpl->fMode;
}

BPoint BView::ConvertToWindow(BPoint point) const
{
    return point + fImpl->Origin();
}

BPoint BView::ConvertToScreen(BPoint point) const
{
    point = ConvertToWindow(point);
    return fImpl->fWindow != nullptr ? fImpl->fWindow->ConvertToScreen(point) : point;
}

BPoint BView::ConvertFromScreen(BPoint point) const
{
    if (fImpl->fWindow != nullptr)
        point = fImpl->fWindow->ConvertFromScreen(point);
    return point - fImpl->Origin();
}

BRect BView::ConvertToScreen(BRect rect) const
{
    rect.OffsetTo(ConvertToScreen(rect.LeftTop()));
    return rect;
}
