// SPDX-License-Identifier: MIT
#include "kits/interface/WidgetView.h"

#include "kits/interface/core/Content.h"
#include "kits/interface/core/ViewPrivate.h"

namespace kits {

WidgetView::WidgetView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags)
{
}

WidgetView::~WidgetView() = default;

void WidgetView::WidgetNeedsUpdate()
{
    if (fContent != nullptr)
        RunOnMain(
            this, [this] { UpdateWidget(); });
}

QWidget* WidgetView::EnsureWidget()
{
    if (fContent == nullptr && IsMainThread()) {
        fContent = std::make_unique<Content>();
        fContent->SetWidget(MakeWidget());
        UpdateWidget();
    }
    return fContent == nullptr ? nullptr : fContent->As<>();
}

void WidgetView::WidgetCreated(QWidget*)
{
    FillView(this, EnsureWidget());
}

void WidgetView::ViewColorChanged()
{
    if (fContent != nullptr)
        FitPalette(fContent->As<>(), ColorBehind(this));
}

} // namespace kits
