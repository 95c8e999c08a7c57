// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/InterfaceDefs.h"
#include "kits/support/Locker.h"
#include "kits/support/Rect.h"

#include <memory>
#include <vector>

class BMessage;
class BView;

/// A picture in memory: one 32-bit word per pixel, alpha<<24 | red<<16 | green<<8 | blue, rows from top to bottom. It
/// needs no screen and no main thread. Drawing through its views sets these words exactly, including alpha; a line or a
/// filled rectangle is the same on every machine.
///
/// Hold its lock while you access the words or draw through its views; if other locks are needed too, take this one
/// last.
class BBitmap {
public:
    /// @param bounds        the pixels, right and bottom included; at most 32767 per side and 2 GiB of words. Fractions
    ///                      are rounded
    /// @param space         B_RGB32 or B_RGBA32, which store the same words
    /// @param acceptsViews  whether AddChild may be used
    /// All words are initially 0xFFFFFFFF.
    BBitmap(BRect bounds, color_space space, bool acceptsViews = false);
    ~BBitmap();
    BBitmap(const BBitmap&) = delete;
    BBitmap& operator=(const BBitmap&) = delete;

    /// B_OK; or B_BAD_VALUE for bounds that are empty, not finite or too large, or another colour space: then there are
    /// no bits.
    status_t InitCheck() const { return fStatus; }
    bool IsValid() const { return fStatus == B_OK; }

    BRect Bounds() const { return fBounds; }
    /// The first word; null if the bitmap is not valid.
    void* Bits() const;
    /// The sizes of all rows and of one row, in bytes.
    int32 BitsLength() const;
    int32 BytesPerRow() const { return fWidth * 4; }

    /// Makes the view draw into this bitmap from now on, and takes ownership of it. Does nothing if the bitmap accepts
    /// no views or the view is attached elsewhere.
    void AddChild(BView* view);
    /// Returns ownership of the view to the caller. Returns false if it is not one of the bitmap's.
    bool RemoveChild(BView* view);

    /// Recursive, see BLocker.
    bool Lock() { return fLock.Lock(); }
    void Unlock() { fLock.Unlock(); }

private:
    BRect fBounds;
    bool fAcceptsViews;
    status_t fStatus;
    int32 fWidth = 0;
    int32 fHeight = 0;
    std::vector<uint32> fWords;
    std::vector<std::unique_ptr<BView>> fChildren;
    mutable BLocker fLock{"BBitmap"};
};
