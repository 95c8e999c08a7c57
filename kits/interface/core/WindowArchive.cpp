// SPDX-License-Identifier: MIT
#include "kits/application/FieldRanges.h"
#include "kits/application/Message.h"
#include "kits/interface/View.h"
#include "kits/interface/Window.h"
#include "kits/interface/core/ClassName.h"
#include "kits/interface/core/ScreenList.h"
#include "kits/interface/core/WindowImpl.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr const char* kMaximized = "maximised";
constexpr const char* kFullScreen = "fullscreen";

/// Returns the archived frame, moved onto a screen, if a window can have it.
BRect FrameIn(const BMessage* archive)
{
    BRect frame(0, 0, 100, 100);
    BRect found;
    if (archive != nullptr && kits::kKitFields.Find(*archive, "_frame", &found) && found.IsValid())
        frame = found;
    return kits::ScreenList::PutOnScreen(frame);
}

const char* TitleIn(const BMessage* archive)
{
    const char* title = nullptr;
    return archive != nullptr && kits::kKitFields.Find(*archive, "_title", &title) ? title : "";
}

/// Returns the number in a field if it lies in its range, otherwise `ifNot`.
int32 NumberIn(const BMessage& archive, const char* field, int32 ifNot)
{
    int32 number = ifNot;
    kits::kKitFields.Find(archive, field, &number);
    return number;
}

kits::WindowImpl::Settings SettingsIn(const BMessage* archive)
{
    kits::WindowImpl::Settings settings;
    settings.title = TitleIn(archive);
    if (archive == nullptr)
        return settings;
    const BMessage& from = *archive;
    settings.type = static_cast<window_type>(NumberIn(from, "_type", settings.type));
    settings.look = static_cast<window_look>(NumberIn(from, "_wlook", settings.look));
    settings.feel = static_cast<window_feel>(NumberIn(from, "_wfeel", settings.feel));
    settings.flags = static_cast<uint32>(std::max(NumberIn(from, "_flags", 0), 0));
    settings.workspaces = static_cast<uint32>(NumberIn(from, "_wspace", B_CURRENT_WORKSPACE));
    const char* zoom = nullptr;
    if (kits::kKitFields.Find(from, "_zoom", &zoom)) {
        if (std::strcmp(zoom, kMaximized) == 0)
            settings.zoom = kits::Zoom::kMaximized;
        else if (std::strcmp(zoom, kFullScreen) == 0)
            settings.zoom = kits::Zoom::kFullScreen;
    }
    int64 rate = 0;
    constexpr bigtime_t kFastest = 20000;
    if (kits::kKitFields.Find(from, "_pulse", &rate) && (rate == 0 || rate >= kFastest))
        settings.pulseRate = rate;
    float* const limits[] = {&settings.minWidth, &settings.maxWidth, &settings.minHeight, &settings.maxHeight};
    for (int32 i = 0; i < 4; i++) {
        float limit = 0;
        if (kits::kKitFields.Find(from, "_limits", &limit, i))
            *limits[i] = limit;
    }
    settings.maxWidth = std::max(settings.minWidth, settings.maxWidth);
    settings.maxHeight = std::max(settings.minHeight, settings.maxHeight);
    return settings;
}

} // namespace

BWindow::BWindow(BMessage* archive)
    : BLooper(TitleIn(archive))
    , fImpl(std::make_unique<kits::WindowImpl>(this, FrameIn(archive), SettingsIn(archive)))
{
}

status_t BWindow::Archive(BMessage* into, bool deep) const
{
    if (into == nullptr)
        return B_BAD_VALUE;
    const kits::WindowImpl::Settings& settings = fImpl->fSettings;
    status_t status = into->AddString("class", kits::ClassNameOf(typeid(*this)));
    const auto addNumber = [&](const char* field, int32 number) {
        if (status == B_OK)
            status = into->AddInt32(field, number);
    };
    if (status == B_OK)
        status = into->AddRect("_frame", Frame());
    if (status == B_OK)
        status = into->AddString("_title", settings.title);
    addNumber("_wlook", settings.look);
    addNumber("_wfeel", settings.feel);
    addNumber("_flags", static_cast<int32>(settings.flags));
    addNumber("_wspace", static_cast<int32>(settings.workspaces));
    addNumber("_type", settings.type);
    if (status == B_OK && settings.zoom != kits::Zoom::kNone)
        status = into->AddString("_zoom", settings.zoom == kits::Zoom::kMaximized ? kMaximized : kFullScreen);
    if (status == B_OK)
        status = into->AddInt64("_pulse", settings.pulseRate);
    for (const float limit : {settings.minWidth, settings.maxWidth, settings.minHeight, settings.maxHeight})
        if (status == B_OK)
            status = into->AddFloat("_limits", limit);
    for (size_t i = 0; deep && status == B_OK && i < fImpl->fChildren.size(); i++) {
        BMessage child;
        status = fImpl->fChildren[i]->Archive(&child, true);
        if (status == B_OK)
            status = into->AddMessage("_views", &child);
    }
    return status;
}
