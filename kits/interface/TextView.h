// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/ScrollView.h"

#include <string>

/// A text of many lines, to read or to edit.
///
/// Long lines wrap at the text rectangle. A tab advances to the next multiple of eight digits' width that no line of
/// the same group has passed: in consecutive lines with tabs, the text after the first tab begins at one place, the
/// text after the second tab at another, and so on. So figures stand in columns in any font.
///
/// Setting the text that is already there costs a comparison; another text replaces the lines that differ, without
/// flicker, and keeps the user's scroll position.
class BTextView : public kits::ScrollTarget {
public:
    /// @param textRect  where the text lies within the view, in its coordinates; its height is ignored
    BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode, uint32 flags);

    /// UTF-8, copied; null is an empty text.
    virtual void SetText(const char* text);
    const char* Text() const { return fText.c_str(); }

    virtual void SetTextRect(BRect rect);
    BRect TextRect() const { return fTextRect; } ///< for tests

    /// Both are true initially. A text that cannot be selected takes the focus only so that the keyboard can scroll it.
    virtual void MakeEditable(bool editable);
    bool IsEditable() const { return fEditable; } ///< for tests
    virtual void MakeSelectable(bool selectable);
    bool IsSelectable() const { return fSelectable; } ///< for tests

private:
    QWidget* MakeWidget() override;
    void ViewColorChanged() override;
    void UpdateWidget() override;

    std::string fText;
    BRect fTextRect;
    bool fEditable = true;
    bool fSelectable = true;
};
