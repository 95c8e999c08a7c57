// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

namespace kits {

class ViewImpl;

/// A shorter way to the screen than the toolkit's painting, for what views have drawn. None is installed at first.
/// Main thread.
class ScreenPath {
public:
    /// The installed one; null: the toolkit paints everything.
    static ScreenPath* Current() { return sCurrent; }
    /// Installs a path, which is not owned; null removes it.
    static void SetCurrent(ScreenPath* path) { sCurrent = path; }

    /// Chooses the view whose rectangles Add gets. No hook of the program runs between this call and the last Add.
    /// @return false when the toolkit has to paint the whole view
    virtual bool Take(const ViewImpl& view) = 0;
    /// Takes over a changed rectangle of the view, in pixels.
    /// @return false when the toolkit has to paint it
    virtual bool Add(const PixelRect& rect) = 0;
    /// Shows everything that was taken over since the last call. The end of each pass over the views calls it.
    virtual void End() = 0;

protected:
    ~ScreenPath() = default;

private:
    inline static ScreenPath* sCurrent = nullptr;
};

} // namespace kits
