// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

#include <QPointer>
#include <QRect>
#include <QWidget>

#include <deque>
#include <utility>
#include <vector>

namespace kits {

class ViewImpl;

/// Copies what changed in views straight into the pictures that their windows have on the screen, and has them shown
/// when it goes. The toolkit's own way (a request for each change, an event, a painter for each view, an answer of the
/// X server) costs several times what a chart's new column does. Main thread; lives for a part of one turn in which no
/// widget is made, moved or shown.
class ScreenCopy {
public:
    ScreenCopy() = default;
    ~ScreenCopy();
    ScreenCopy(const ScreenCopy&) = delete;
    ScreenCopy& operator=(const ScreenCopy&) = delete;

    /// The view that Add is about from here on.
    /// @return false when all of it has to be painted in the toolkit's way: it is transparent, the screen is scaled,
    ///         the window's picture is not of the right kind or is just being made anew
    bool Take(const ViewImpl& impl);
    /// Copies a rectangle of the view. False when the toolkit has to paint it: nothing could be taken, or something
    /// lies above it.
    bool Add(const PixelRect& rect);

private:
    struct Window {
        QPointer<QWidget> widget;
        const QImage* picture = nullptr; ///< null when it can't be written to
        std::vector<QRect> changed;
    };
    /// What a widget with views in it shows of them, in the window's pixels.
    struct Holder {
        const QWidget* widget = nullptr;
        QPoint corner;
        QRect visible;
        std::vector<QRect> above;                               ///< lies above all its children
        std::vector<std::pair<const QWidget*, QRect>> children; ///< the shown ones, the lowest first
    };

    Window& WindowOf(QWidget& widget);
    const Holder& HolderOf(const QWidget& widget);
    static void ListChildren(const QWidget& widget, QPoint corner,
                             std::vector<std::pair<const QWidget*, QRect>>* children);

    std::deque<Window> fWindows;
    std::deque<Holder> fHolders;

    // The view that was taken.
    const ViewImpl* fView = nullptr;
    Window* fWindow = nullptr;
    QPoint fCorner;
    QRect fVisible;
    std::vector<QRect> fAbove;
};

} // namespace kits
