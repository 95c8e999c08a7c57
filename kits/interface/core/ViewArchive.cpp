// SPDX-License-Identifier: MIT
#include "kits/application/FieldRanges.h"
#include "kits/application/Message.h"
#include "kits/interface/core/ClassName.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/drawing/TextBlend.h"

namespace {

/// Returns the archived frame, if a view can have it.
BRect FrameIn(const BMessage* archive)
{
    BRect frame(0, 0, 0, 0);
    if (archive != nullptr)
        kits::kKitFields.Find(*archive, "_frame", &frame);
    return frame;
}

const char* NameIn(const BMessage* archive)
{
    const char* name = nullptr;
    return archive != nullptr && kits::kKitFields.Find(*archive, "_name", &name) ? name : nullptr;
}

uint32 NumberIn(const BMessage* archive, const char* field)
{
    int32 number = 0;
    if (archive != nullptr)
        kits::kKitFields.Find(*archive, field, &number);
    return static_cast<uint32>(number);
}

} // namespace

BView::BView(BMessage* archive)
    : BView(FrameIn(archive), NameIn(archive), NumberIn(archive, "_resize_mode"), NumberIn(archive, "_flags"))
{
    if (archive == nullptr)
        return;
    rgb_color* const colors[] = {&fImpl->fHigh, &fImpl->fLow, &fImpl->fViewColor};
    for (int32 i = 0; i < 3; i++) {
        int32 word = 0;
        if (kits::kKitFields.Find(*archive, "_color", &word, i)) {
            const auto bits = static_cast<uint32>(word);
            *colors[i] = make_color(static_cast<uint8>(bits >> 16), static_cast<uint8>(bits >> 8),
                                    static_cast<uint8>(bits), static_cast<uint8>(bits >> 24));
        }
    }
}

status_t BView::Archive(BMessage* into, bool deep) const
{
    if (into == nullptr)
        return B_BAD_VALUE;
    status_t status = into->AddString("class", kits::ClassNameOf(typeid(*this)));
    if (status == B_OK && *Name() != '\0')
        status = into->AddString("_name", Name());
    if (status == B_OK)
        status = into->AddRect("_frame", Frame());
    if (status == B_OK)
        status = into->AddInt32("_resize_mode", static_cast<int32>(fImpl->fMode));
    if (status == B_OK)
        status = into->AddInt32("_flags", static_cast<int32>(fImpl->fFlags));
    for (const rgb_color color : {fImpl->fHigh, fImpl->fLow, fImpl->fViewColor})
        if (status == B_OK)
            status = into->AddInt32("_color", static_cast<int32>(kits::ToWord(color)));
    for (size_t i = 0; deep && status == B_OK && i < fImpl->fChildren.size(); i++) {
        BMessage child;
        status = fImpl->fChildren[i]->Archive(&child, true);
        if (status == B_OK)
            status = into->AddMessage("_views", &child);
    }
    return status;
}
