// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/SupportDefs.h"

#include <string>

class BListView;
class BOutlineListView;

/// One row of a list. Once it is added to a list, the list owns it.
class BListItem {
public:
    /// @param level     depth in an outline list, 0 is the outermost
    /// @param expanded  whether the rows under it are shown
    explicit BListItem(int32 level = 0, bool expanded = true);
    BListItem(const BListItem&) = delete;
    BListItem& operator=(const BListItem&) = delete;
    virtual ~BListItem() = default;

    /// The row's text, which assistive technology also uses as its name; never null.
    virtual const char* Text() const = 0;

    bool IsSelected() const { return fSelected; }
    bool IsExpanded() const { return fExpanded; }
    int32 OutlineLevel() const { return fLevel; }

    /// A disabled row is greyed and cannot be selected. After changing a row that is in a list, call
    /// BListView::InvalidateItem.
    void SetEnabled(bool enabled) { fEnabled = enabled; }
    bool IsEnabled() const { return fEnabled; }

private:
    friend class BListView;
    friend class BOutlineListView;

    int32 fLevel;
    bool fExpanded;
    bool fSelected = false;
    bool fInList = false;
    bool fEnabled = true;
};

/// A row that shows a text.
class BStringItem : public BListItem {
public:
    explicit BStringItem(const char* text, int32 level = 0, bool expanded = true);

    /// UTF-8, copied; null is an empty text.
    virtual void SetText(const char* text);
    const char* Text() const override { return fText.c_str(); }

private:
    std::string fText;
};
