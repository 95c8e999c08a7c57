// SPDX-License-Identifier: MIT
#include "kits/interface/Shelf.h"

#include "kits/interface/core/ViewImpl.h"

BShelf::BShelf(BView* view)
    : fView(view)
{
    kits::ViewImpl::Of(view).fShelf = this;
}

BShelf::~BShelf()
{
    kits::ViewImpl& impl = kits::ViewImpl::Of(fView);
    if (impl.fShelf == this)
        impl.fShelf = nullptr;
}
