// SPDX-License-Identifier: MIT
#include "kits/interface/core/ScreenPath.h"
#include "kits/interface/core/UpdateQueue.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/core/ViewPrivate.h"

#include <QWidget>

#include <utility>

// Brings a view's widget to the view's state.

namespace kits {

void ViewImpl::MakeWidgets()
{
    if (fWindow == nullptr)
        return;
    QWidget* const parent = fParent != nullptr ? static_cast<QWidget*>(Of(fParent).fPane) : WindowWidget(fWindow);
    const bool isNew = fPane == nullptr;
    if (isNew)
        fPane = new ViewPane(*this, parent);
    else
        fPane->setParent(parent);
    SyncWidget();
    if (const BView* next = fView->NextSibling(); next != nullptr && Of(next).fPane != nullptr)
        fPane->stackUnder(Of(next).fPane);
    if (isNew)
        fView->WidgetCreated(fPane);
    for (const std::unique_ptr<BView>& child : fChildren)
        Of(child.get()).MakeWidgets();
}

void ViewImpl::WidgetChanged()
{
    if (fWindow == nullptr)
        return;
    fWidgetDirty = true;
    if (IsMainThread())
        SyncWidget();
    else
        UpdateQueue::Add(*this);
}

void ViewImpl::SyncWidget()
{
    fWidgetDirty = false;
    if (fPane == nullptr)
        return;
    const PixelRect frame = PixelFrame();
    const QRect geometry(frame.left, frame.top, frame.Width(), frame.Height());
    if (fPane->geometry() != geometry) {
        // The display would move an opaque widget's pixels, and would then show some that are painted in the same turn
        // in their old state.
        fPane->setAttribute(Qt::WA_OpaquePaintEvent, false);
        fPane->setGeometry(geometry);
    }
    SyncOpaque();
    const Qt::FocusPolicy policy = fFlags & B_NAVIGABLE ? Qt::StrongFocus : Qt::NoFocus;
    if (fPane->focusPolicy() != policy)
        fPane->setFocusPolicy(policy);
    const QString tip = QString::fromStdString(fToolTip);
    if (fPane->toolTip() != tip)
        fPane->setToolTip(tip);
    const QString name = QString::fromStdString(fAccessibleName.empty() ? fView->Name() : fAccessibleName);
    if (fPane->accessibleName() != name)
        fPane->setAccessibleName(name);
    if (QWidget* content = fPane->focusProxy(); content != nullptr && content->accessibleName() != name)
        content->setAccessibleName(name);
    // Children on the view colour, such as labels, get their text colour from the palette.
    if (!fPane->children().isEmpty() && fViewColor != B_TRANSPARENT_COLOR) {
        const QColor color(fViewColor.red, fViewColor.green, fViewColor.blue);
        if (fPane->palette().color(QPalette::Window) != color) {
            QPalette palette = fPane->palette();
            palette.setColor(QPalette::Window, color);
            fPane->setPalette(palette);
        }
    }
    if (!fPane->isVisibleTo(fPane->parentWidget()))
        fPane->show();
}

void ViewImpl::SyncOpaque()
{
    const bool isOpaque = fSurface.Exists() ? fSurface.IsOpaque() : fViewColor != B_TRANSPARENT_COLOR;
    if (fPane->testAttribute(Qt::WA_OpaquePaintEvent) != isOpaque)
        fPane->setAttribute(Qt::WA_OpaquePaintEvent, isOpaque);
}

void ViewImpl::ShowDirty()
{
    if (fDirty.IsEmpty())
        return;
    if (fPane != nullptr) {
        SyncOpaque();
        ScreenPath* const path = ScreenPath::Current();
        const bool isTaken = path != nullptr && path->Take(*this);
        for (const PixelRect& rect : fDirty) {
            if (isTaken && path->Add(rect))
                continue;
            QRect changed(rect.left, rect.top, rect.Width(), rect.Height());
            // At a fractional scale the toolkit's own rounding may be off by a pixel.
            if (!fSurface.Grid().IsUnit())
                changed.adjust(-1, -1, 1, 1);
            fPane->update(changed);
        }
    }
    fDirty.MakeEmpty();
}

bool ViewImpl::CallFrameHooks()
{
    const std::weak_ptr<ViewImpl*> self = fSelf;
    if (std::exchange(fMovedHook, false))
        fView->FrameMoved(fFrame.LeftTop());
    if (self.expired())
        return false;
    if (std::exchange(fResizedHook, false))
        fView->FrameResized(fFrame.Width(), fFrame.Height());
    return !self.expired();
}

} // namespace kits
