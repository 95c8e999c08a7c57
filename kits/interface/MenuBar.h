// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Menu.h"

#include <memory>

namespace kits {
class Content;
}

/// A row of menus at the top of a window. Its items' shortcuts work in the whole window; F10 and Alt with an underlined
/// letter reach it by keyboard.
class BMenuBar : public BMenu {
public:
    /// @param resizeToFit  takes the height that its font asks for when it is attached (and the width of the window
    /// when
    ///                     its frame is wider); otherwise the frame is taken as it is
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
