// SPDX-License-Identifier: MIT
#include "kits/interface/ListItem.h"

#include <algorithm>

BListItem::BListItem(int32 level, bool expanded)
    : fLevel(std::max(level, 0))
    , fExpanded(expanded)
{
}

BListItem::~BListItem() = default;

BStringItem::BStringItem(const char* text, int32 level, bool expanded)
    : BListItem(level, expanded)
    , fText(text == nullptr ? "" : text)
{
}

BStringItem::~BStringItem() = default;

void BStringItem::SetText(const char* text)
{
    fText = text == nullptr ? "" : text;
}
