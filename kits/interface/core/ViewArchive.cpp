// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/core/ArchiveFields.h"
#include "kits/interface/core/ClassName.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/drawing/TextBlend.h"

namespace {

const kits::Field<std::string> kNameField("_name", 0, 1024);
const kits::Field<int32> kResizingModeField("_resize_mode", 0, 0x77);

const BMessage& OrEmpty(const BMessage* archive)
{
    static const BMessage empty;
    return archive != nullptr ? *archive : empty;
}

} // namespace

BView::BView(BMessage* archive)
    : BView(kits::kFrameField.Get(OrEmpty(archive)), kNameField.Get(OrEmpty(archive)).c_str(),
            static_cast<uint32>(kResizingModeField.Get(OrEmpty(archive))),
            static_cast<uint32>(kits::kFlagsField.Get(OrEmpty(archive))))
{
    rgb_color* const colors[] = {&fImpl->fHigh, &fImpl->fLow, &fImpl->fViewColor};
    for (int32 i = 0; i < 3; i++) {
        int32 word = 0;
        if (kits::kPenColorsField.Find(OrEmpty(archive), &word, i)) {
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
    status_t status = kits::kClassField.Add(into, kits::ClassNameOf(typeid(*this)));
    if (status == B_OK && *Name() != '\0')
        status = kNameField.Add(into, Name());
    if (status == B_OK)
        status = kits::kFrameField.Add(into, Frame());
    if (status == B_OK)
        status = kResizingModeField.Add(into, static_cast<int32>(fImpl->fMode));
    if (status == B_OK)
        status = kits::kFlagsField.Add(into, static_cast<int32>(fImpl->fFlags));
    for (const rgb_color color : {fImpl->fHigh, fImpl->fLow, fImpl->fViewColor})
        if (status == B_OK)
            status = kits::kPenColorsField.Add(into, static_cast<int32>(kits::ToWord(color)));
    for (size_t i = 0; deep && status == B_OK && i < fImpl->fChildren.size(); i++) {
        BMessage child;
        status = fImpl->fChildren[i]->Archive(&child, true);
        if (status == B_OK)
            status = kits::kChildrenField.Add(into, child);
    }
    return status;
}
