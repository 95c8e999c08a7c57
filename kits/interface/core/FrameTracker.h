// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

namespace kits {

/// Distinguishes the frame that the user and the program gave a window from the window manager's changes.
///
/// It keeps two things: the frame that the window has when it is neither maximised, full screen nor tiled, and the size
/// that its content covers now. A requested size counts at once. Until the window manager has confirmed it, its reports
/// are outdated and ignored. If it has not confirmed the size when the grace period ends, the window manager decides:
/// the window counts as tiled until a request is granted again. Pure: callers pass the time, and nothing is queried.
class FrameTracker {
public:
    /// How long a request may stay unconfirmed, in microseconds.
    static constexpr bigtime_t kGrace = 500000;
    /// How long after a change of scale no report counts as the user's: the window manager, panels and themes follow
    /// the scale, too, and move and resize windows meanwhile.
    static constexpr bigtime_t kScaleGrace = 2000000;

    explicit FrameTracker(const PixelRect& frame)
        : fFrame(frame)
        , fSettled(frame)
        , fActual(frame)
    {
    }

    /// The frame to which it returns.
    const PixelRect& Frame() const { return fFrame; }
    /// The area that the content covers, in the toolkit's coordinates of the screen.
    PixelRect Content() const;
    bool IsZoomed() const { return fZoomed || fTiled; }
    bool IsPending() const { return fPending; }
    /// The frame that the system's window should get: Frame(), but at the place that Rescale chose as long as nobody
    /// moves it.
    PixelRect Wanted() const;

    /// Whether it is shown at a place that Rescale chose.
    bool IsElsewhere() const { return fElsewhere; }

    /// Windows do not know their place here: the toolkit counts from the content's own corner. Frame() keeps the
    /// requested place.
    void SetPlaceless() { fPlaceless = true; }
    bool IsPlaceless() const { return fPlaceless; }
    /// The program asks for a frame.
    /// @return whether to change the system's window now
    bool Ask(const PixelRect& frame, bigtime_t now);
    /// The system's window is about to be shown with Frame(): changes after that are the window manager's.
    void Show();
    /// From now on, sizes that differ by this much count as equal: at a fractional scale the window manager may not be
    /// able to grant every logical size.
    void SetSlack(int32 slack) { fSlack = slack; }
    /// The scale of the screen has changed: the system's window is about to get the size of Frame() again, with its
    /// content's corner here. Changes by the window manager are not the user's: Frame() keeps its size, even if the
    /// window manager grants another one, and its place until the window moves after kScaleGrace.
    void Rescale(int32 left, int32 top, bigtime_t now);
    /// The window has come to a screen of another scale, where it still covers as many screen pixels as before: Frame()
    /// keeps its size, which differs from the reported one, until the next Ask, Show or Release. Its place is the
    /// user's.
    void HoldSize();
    /// Reports count again.
    void Release();
    /// Whether the system's window has the size of Frame() now.
    bool HasWantedSize() const;
    /// The window manager reports a size, or a place.
    /// @return whether Frame() or Content() has changed
    bool ReportSize(int32 width, int32 height, bigtime_t now);
    bool ReportPlace(int32 left, int32 top, bigtime_t now);
    /// The window was maximised or made full screen, or restored.
    /// @return whether the system's window should get Frame() now
    bool SetZoomed(bool zoomed, bigtime_t now);
    /// Call it kGrace after Ask, Show and SetZoomed(false), and kScaleGrace after Rescale.
    /// @param limitWidth,  limitHeight the room on the screen
    /// @return whether Content() has changed
    bool GraceOver(int32 limitWidth, int32 limitHeight);

private:
    void NoteUsers(const PixelRect& frame, bigtime_t now);

    PixelRect fFrame;
    PixelRect fSettled; ///< the frame before the changes of the last moments
    PixelRect fActual;  ///< as reported
    bigtime_t fChanged = 0;
    bool fPending = false;
    bool fZoomed = false;
    bool fTiled = false;
    int32 fSlack = 0;
    bool fPlaceless = false;
    bool fRescaling = false; ///< Rescale has made the pending request
    bool fElsewhere = false; ///< Rescale chose the place, and nobody has moved the window since
    bigtime_t fRescaled = 0; ///< the time of Rescale
};

} // namespace kits
