// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Menu.h"

#include <memory>

namespace kits {
class Content;
}

/// A row of menus at the top of a window. Its items' shortcuts work in the whole window; F10, and Alt with an
/// underlined letter, reach it by keyboard.
class BMenuBar : public BMenu {
public:
    /// @param resizeToFit  when attached, take the height that the font needs (and the width of the window if the frame
    ///                     is wider); otherwise keep the frame
    BMenuBar(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
             menu_layout layout = B_ITEMS_IN_ROW, bool resizeToFit = true);
    ~BMenuBar() override;

    void AttachedToWindow() override;
    void GetPreferredSize(float* width, float* height) override;

private:
    void WidgetCreated(QWidget* widget) override;
    void ViewColorChanged() override;

    std::unique_ptr<kits::Content> fContent;
    bool fResizeToFit;
};
