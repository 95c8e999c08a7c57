// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/View.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ArchiveFields.h"
#include "kits/interface/core/ClassName.h"
#include "kits/interface/core/ScreenList.h"
#include "kits/interface/core/WindowImpl.h"

#include <algorithm>
#include <string>

namespace {

using kits::Field;

constexpr float kLongestName = 1024;
const Field<std::string> kTitleField("_title", 0, kLongestName);
const Field<int32> kTypeField("_type", 0, 5);
const Field<int32> kLookField("_wlook", 0, 5);
const Field<int32> kFeelField("_wfeel", 0, 2); // no window from an archive becomes a part of the desktop
const Field<std::string> kZoomField("_zoom", 0, kLongestName);
const Field<int64> kPulseField("_pulse", 0, 3'600'000'000); // rates above 0 and below 20 ms are ignored
/// Least width, greatest width, least height, greatest height.
const Field<float> kLimitsField("_limits", 0, kits::kFarthestPlace, 0, kits::Outside::kLeftOut, 4);

constexpr const char* kMaximized = "maximised";
constexpr const char* kFullScreen = "fullscreen";

/// Returns the archived frame, moved onto a screen, if a window can have it.
BRect FrameIn(const BMessage* archive)
{
    BRect frame(0, 0, 100, 100);
    BRect found;
    if (archive != nullptr && kits::kFrameField.Find(*archive, &found) && found.IsValid())
        frame = found;
    return kits::ScreenList::PutOnScreen(frame);
}

std::string TitleIn(const BMessage* archive)
{
    return archive != nullptr ? kTitleField.Get(*archive) : "";
}

/// Returns the number in a field if it lies in its range, otherwise `ifNot`.
int32 NumberIn(const BMessage& archive, const Field<int32>& field, int32 ifNot)
{
    int32 number = ifNot;
    field.Find(archive, &number);
    return number;
}

kits::WindowImpl::Settings SettingsIn(const BMessage* archive)
{
    kits::WindowImpl::Settings settings;
    settings.title = TitleIn(archive);
    if (archive == nullptr)
        return settings;
    const BMessage& from = *archive;
    settings.type = static_cast<window_type>(NumberIn(from, kTypeField, settings.type));
    settings.look = static_cast<window_look>(NumberIn(from, kLookField, settings.look));
    settings.feel = static_cast<window_feel>(NumberIn(from, kFeelField, settings.feel));
    settings.flags = static_cast<uint32>(std::max(kits::kFlagsField.Get(from), 0));
    settings.workspaces = static_cast<uint32>(NumberIn(from, kits::kWorkspacesField, B_CURRENT_WORKSPACE));
    const std::string zoom = kZoomField.Get(from);
    if (zoom == kMaximized)
        settings.zoom = kits::Zoom::kMaximized;
    else if (zoom == kFullScreen)
        settings.zoom = kits::Zoom::kFullScreen;
    int64 rate = 0;
    constexpr bigtime_t kFastest = 20000;
    if (kPulseField.Find(from, &rate) && (rate == 0 || rate >= kFastest))
        settings.pulseRate = rate;
    float* const limits[] = {&settings.minWidth, &settings.maxWidth, &settings.minHeight, &settings.maxHeight};
    for (int32 i = 0; i < 4; i++)
        kLimitsField.Find(from, limits[i], i);
    settings.maxWidth = std::max(settings.minWidth, settings.maxWidth);
    settings.maxHeight = std::max(settings.minHeight, settings.maxHeight);
    return settings;
}

} // namespace

BWindow::BWindow(BMessage* archive)
    : BLooper(TitleIn(archive).c_str())
    , fImpl(std::make_unique<kits::WindowImpl>(this, FrameIn(archive), SettingsIn(archive)))
{
}

status_t BWindow::Archive(BMessage* into, bool deep) const
{
    if (into == nullptr)
        return B_BAD_VALUE;
    const kits::WindowImpl::Settings& settings = fImpl->fSettings;
    status_t status = kits::kClassField.Add(into, kits::ClassNameOf(typeid(*this)));
    const auto addNumber = [&](const Field<int32>& field, int32 number) {
        if (status == B_OK)
            status = field.Add(into, number);
    };
    if (status == B_OK)
        status = kits::kFrameField.Add(into, Frame());
    if (status == B_OK)
        status = kTitleField.Add(into, settings.title);
    addNumber(kLookField, settings.look);
    addNumber(kFeelField, settings.feel);
    addNumber(kits::kFlagsField, static_cast<int32>(settings.flags));
    addNumber(kits::kWorkspacesField, static_cast<int32>(settings.workspaces));
    addNumber(kTypeField, settings.type);
    if (status == B_OK && settings.zoom != kits::Zoom::kNone)
        status = kZoomField.Add(into, settings.zoom == kits::Zoom::kMaximized ? kMaximized : kFullScreen);
    if (status == B_OK)
        status = kPulseField.Add(into, settings.pulseRate);
    for (const float limit : {settings.minWidth, settings.maxWidth, settings.minHeight, settings.maxHeight})
        if (status == B_OK)
            status = kLimitsField.Add(into, limit);
    for (size_t i = 0; deep && status == B_OK && i < fImpl->fChildren.size(); i++) {
        BMessage child;
        status = fImpl->fChildren[i]->Archive(&child, true);
        if (status == B_OK)
            status = kits::kChildrenField.Add(into, child);
    }
    return status;
}
