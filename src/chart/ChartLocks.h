// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Bitmap.h"
#include "kits/interface/View.h"
#include "src/support/ScopedLock.h"

/// Holds the lock of a view's looper as long as it lives; holds nothing when the view is in no window.
class LooperLock {
public:
    explicit LooperLock(BView* view)
        : fView(view->LockLooper() ? view : nullptr)
    {
    }
    ~LooperLock()
    {
        if (fView != nullptr)
            fView->UnlockLooper();
    }
    LooperLock(const LooperLock&) = delete;
    LooperLock& operator=(const LooperLock&) = delete;
    explicit operator bool() const { return fView != nullptr; }

private:
    BView* fView;
};

/// Holds the lock of a bitmap; null holds nothing.
typedef ScopedLock<BBitmap> PictureLock;
