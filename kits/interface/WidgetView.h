// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

#include <memory>

namespace kits {

class Content;

/// Base of the views that consist of one of the toolkit's widgets: controls, lists, texts, boxes and tab views. The
/// toolkit draws it and handles its mouse, keyboard and focus; the view keeps its state. Setters may be called from any
/// thread under the looper lock; the main thread updates the widget.
class WidgetView : public BView {
public:
    WidgetView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
    ~WidgetView() override;

protected:
    /// Makes the toolkit's widget; called once, on the main thread, when the view is first attached, or when
    /// EnsureWidget() is called before. The caller owns the widget. Its signals are connected with fContent as their
    /// context.
    virtual QWidget* MakeWidget() = 0;
    /// Brings that widget up to date with the state of this object. Called on the main thread after every change, and
    /// once when the widget was made.
    virtual void UpdateWidget() = 0;
    /// Calls UpdateWidget(), at once on the main thread, otherwise queued for it. Does nothing while there is no
    /// widget.
    void WidgetNeedsUpdate();
    /// Returns the widget, making it if necessary; null on another thread before it was made.
    QWidget* EnsureWidget();

    /// Makes the widget fill the view.
    void WidgetCreated(QWidget* widget) override;
    /// Makes the widget readable on the view's colour.
    void ViewColorChanged() override;

    std::unique_ptr<Content> fContent;
};

} // namespace kits
