// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Bitmap.h"
#include "kits/interface/View.h"

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

/// Holds the lock of a bitmap as long as it lives; null holds nothing.
class PictureLock {
public:
    explicit PictureLock(BBitmap* bitmap)
        : fBitmap(bitmap != nullptr && bitmap->Lock() ? bitmap : nullptr)
    {
    }
    ~PictureLock()
    {
        if (fBitmap != nullptr)
            fBitmap->Unlock();
    }
    PictureLock(const PictureLock&) = delete;
    PictureLock& operator=(const PictureLock&) = delete;
    explicit operator bool() const { return fBitmap != nullptr; }

private:
    BBitmap* fBitmap;
};
