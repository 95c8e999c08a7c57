// SPDX-License-Identifier: MIT
#include "kits/interface/Bitmap.h"

#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/drawing/PixelGrid.h"

#include <cmath>

namespace {

constexpr float kMaxSide = 32767;

} // namespace

BBitmap::BBitmap(BRect bounds, color_space space, bool acceptsViews)
    : fBounds(bounds)
    , fAcceptsViews(acceptsViews)
    , fStatus(B_BAD_VALUE)
{
    // The comparison refuses NaN as well.
    const bool sane = std::abs(bounds.left) <= kMaxSide && std::abs(bounds.top) <= kMaxSide && bounds.IsValid() &&
                      bounds.Width() < kMaxSide && bounds.Height() < kMaxSide;
    if (!sane || (space != B_RGB32 && space != B_RGBA32))
        return;
    const kits::PixelRect pixels = kits::ToPixels(bounds);
    fBounds = kits::FromPixels(pixels);
    // The length has to fit the result of BitsLength.
    if (static_cast<int64>(pixels.Width()) * pixels.Height() > INT32_MAX / 4)
        return;
    fWidth = pixels.Width();
    fHeight = pixels.Height();
    try {
        fWords.assign(static_cast<size_t>(fWidth) * static_cast<size_t>(fHeight), 0xFFFFFFFF);
    } catch (const std::bad_alloc&) {
        fStatus = B_NO_MEMORY;
        fWidth = 0;
        fHeight = 0;
        return;
    }
    fStatus = B_OK;
}

BBitmap::~BBitmap()
{
    while (!fChildren.empty()) {
        const std::unique_ptr<BView> child = std::move(fChildren.back());
        fChildren.pop_back();
        kits::ViewImpl::Of(child.get()).SetBitmap(nullptr);
    }
}

void* BBitmap::Bits() const
{
    return fWords.empty() ? nullptr : const_cast<uint32*>(fWords.data());
}

int32 BBitmap::BitsLength() const
{
    return static_cast<int32>(fWords.size() * sizeof(uint32));
}

void BBitmap::AddChild(BView* view)
{
    if (view == nullptr || !fAcceptsViews || !IsValid() || kits::ViewImpl::Of(view).IsAttached())
        return;
    fChildren.emplace_back(view);
    kits::ViewImpl::Of(view).SetBitmap(this);
}

bool BBitmap::RemoveChild(BView* view)
{
    for (auto it = fChildren.begin(); it != fChildren.end(); ++it) {
        if (it->get() == view) {
            static_cast<void>(it->release()); // the caller's from here on
            fChildren.erase(it);
            kits::ViewImpl::Of(view).SetBitmap(nullptr);
            return true;
        }
    }
    return false;
}
