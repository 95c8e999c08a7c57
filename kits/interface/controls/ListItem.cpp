// SPDX-License-Identifier: MIT
#include "kits/interface/ListItem.h"

#include <algorithm>

BListItem::BListItem(int32 level, bool expanded)
    : fLevel(std::max(level, 0))
    , fExpanded(expanded)
{
}

BStringItem::BStringItem(const char* text, int32 level, bool expanded)
    : BListItem(level, expanded)
    , fText(text == nullptr ? "" : text)
{
}

void BStringItem::SetText(const char* text)
{
    fText = text == nullptr ? "" : text;
}
