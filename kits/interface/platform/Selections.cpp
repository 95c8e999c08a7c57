// SPDX-License-Identifier: MIT
#include "kits/interface/platform/Selections.h"

#include "kits/interface/platform/Display.h"
#include "kits/interface/platform/selections/Fetches.h"
#include "kits/interface/platform/selections/ToolkitSource.h"
#include "kits/interface/platform/wayland/WaylandSource.h"
#include "kits/interface/platform/x11/XSelections.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace kits::Selections {

namespace {

QClipboard::Mode ModeOf(Name name)
{
    return name == Name::kPrimary ? QClipboard::Selection : QClipboard::Clipboard;
}

bool IsOurs(Name name)
{
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    return name == Name::kPrimary ? clipboard.ownsSelection() : clipboard.ownsClipboard();
}

} // namespace

const QMimeData* AtHand(Name name)
{
    const bool isElsewhere = (Display::IsX11() || Display::IsWayland()) && !IsOurs(name);
    return isElsewhere ? nullptr : QGuiApplication::clipboard()->mimeData(ModeOf(name));
}

std::unique_ptr<SelectionSource> SourceOf(Name name)
{
    if (AtHand(name) != nullptr)
        return nullptr;
    if (Display::IsX11())
        return XSelections::SourceOf(name == Name::kPrimary ? XSelections::kPrimary : XSelections::kClipboard);
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData(ModeOf(name));
    return data != nullptr && !data->formats().isEmpty() ? SourceOf(*data) : nullptr;
}

bool MayHaveText(Name name)
{
    const QMimeData* const data = AtHand(name);
    return data != nullptr ? data->hasText() : SourceOf(name) != nullptr;
}

bool HasPrimary()
{
    return QGuiApplication::clipboard()->supportsSelection();
}

std::unique_ptr<SelectionSource> SourceOf(const QMimeData& dragged)
{
    std::unique_ptr<SelectionSource> source = WaylandSource::Of(dragged);
    return source != nullptr ? std::move(source) : std::make_unique<ToolkitSource>(dragged);
}

void Stop()
{
    Fetches::CancelAll();
    XSelections::HandOver();
    XSelections::Stop();
}

} // namespace kits::Selections
