// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

namespace kits {

class ViewImpl;

/// A shorter way to the screen than the toolkit's painting, for drawings of views. Initially none is installed. Main
/// thread.
class ScreenPath {
public:
    /// Returns the installed path; null: the toolkit paints everything.
    static ScreenPath* Current() { return sCurrent; }
    /// Installs a path, not owned; null removes it.
    static void SetCurrent(ScreenPath* path) { sCurrent = path; }

    /// Selects the view whose rectangles Add gets. No hook of the program runs between this call and the last Add.
    /// @return false if the toolkit must paint the whole view
    virtual bool Take(const ViewImpl& view) = 0;
    /// Takes over a changed rectangle of the view, in pixels.
    /// @return false if the toolkit must paint it
    virtual bool Add(const PixelRect& rect) = 0;
    /// Shows everything that was taken over since the last call. Called at the end of each pass over the views.
    virtual void End() = 0;

protected:
    ~ScreenPath() = default;

private:
    inline static ScreenPath* sCurrent = nullptr;
};

} // namespace kits
