// SPDX-License-Identifier: MIT
#include "kits/interface/core/ViewPrivate.h"

#include "kits/interface/core/Pointer.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/interface/core/WindowPane.h"

#include <QMouseEvent>
#include <QResizeEvent>

namespace kits {

namespace {

/// Keeps a widget as large as its parent.
class Filler : public QObject {
public:
    Filler(QWidget* parent, QWidget* child)
        : QObject(child)
        , fChild(child)
    {
        parent->installEventFilter(this);
        child->setGeometry(parent->rect());
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            fChild->setGeometry(QRect(QPoint(0, 0), static_cast<QResizeEvent*>(event)->size()));
        return false;
    }

private:
    QWidget* fChild; ///< the parent owns this object, so it outlives it
};

} // namespace

QWidget* ViewWidget(const BView* view)
{
    return view != nullptr ? ViewImpl::Of(view).fPane : nullptr;
}

QWidget* WindowWidget(const BWindow* window)
{
    return WindowImpl::Of(window).fPane;
}

void FollowSize(QWidget* parent, QWidget* child)
{
    child->setParent(parent);
    new Filler(parent, child);
}

void FillView(BView* view, QWidget* child)
{
    QWidget* const pane = ViewWidget(view);
    FollowSize(pane, child);
    pane->setFocusProxy(child);
    // In a widget with parts, one part takes the focus for all, and a policy set here would apply to that part too.
    const QWidget* focused = child;
    while (focused->focusProxy() != nullptr)
        focused = focused->focusProxy();
    child->setFocusPolicy(view->Flags() & B_NAVIGABLE ? focused->focusPolicy() : Qt::NoFocus);
    child->setAccessibleName(pane->accessibleName());
    child->show();
}

void RunOnMain(BView* view, std::function<void()> function)
{
    if (IsMainThread()) {
        function();
        return;
    }
    RunOnMainThread([self = std::weak_ptr<ViewImpl*>(ViewImpl::Of(view).fSelf), run = std::move(function)] {
        if (!self.expired())
            run();
    });
}

QRect ToQRect(const BRect& rect)
{
    const PixelRect pixels = ToPixels(rect);
    return {pixels.left, pixels.top, pixels.Width(), pixels.Height()};
}

BRect FromQRect(const QRect& rect)
{
    return FromPixels({rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()});
}

BPoint FromQPoint(const QPoint& point)
{
    return {static_cast<float>(point.x()), static_cast<float>(point.y())};
}

void SetDefaultButton(BWindow* window, BView* button, std::function<void()> press)
{
    WindowImpl& impl = WindowImpl::Of(window);
    impl.fDefaultButton = button;
    impl.fPressDefault = button != nullptr ? std::move(press) : nullptr;
}

} // namespace kits
