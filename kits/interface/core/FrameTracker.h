// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/drawing/PixelGrid.h"

namespace kits {

/// Tells the frame that the user and the program gave a window from what the window manager makes of it.
///
/// Two things are kept: the frame, which the window has when it is neither maximised, full screen nor tiled, and the
/// size that its content covers now. A size that was asked for counts at once. Until the window manager has confirmed
/// it, what it reports is older news and ignored; if it has not confirmed it when the grace is over, it decides itself:
/// the window counts as tiled, until a request is granted again. Pure: times are given, nothing is asked.
class FrameTracker {
public:
    /// How long a request may stay unanswered, in microseconds.
    static constexpr bigtime_t kGrace = 500000;
    /// How long after a change of scale nothing that is reported counts as the user's: the window manager, panels and
    /// themes follow it, too, and move and resize windows meanwhile.
    static constexpr bigtime_t kScaleGrace = 2000000;

    explicit FrameTracker(const PixelRect& frame)
        : fFrame(frame)
        , fSettled(frame)
        , fActual(frame)
    {
    }

    /// The frame that it goes back to.
    const PixelRect& Frame() const { return fFrame; }
    /// What the content covers, in the toolkit's coordinates of the screen.
    PixelRect Content() const;
    bool IsZoomed() const { return fZoomed || fTiled; }
    bool IsPending() const { return fPending; }
    /// The frame that the system's window is to get: that of Frame(), but at the place that Rescale chose as long as
    /// nobody moves it.
    PixelRect Wanted() const;

    /// Whether it shows at a place that Rescale chose.
    bool IsElsewhere() const { return fElsewhere; }

    /// Windows do not know their place here: the toolkit counts from the content's own corner. Frame() keeps the place
    /// that was asked for.
    void SetPlaceless() { fPlaceless = true; }
    bool IsPlaceless() const { return fPlaceless; }
    /// The program asks for a frame. @return whether the system's window is to be changed now
    bool Ask(const PixelRect& frame, bigtime_t now);
    /// The system's window is about to be shown with Frame(): what the window manager makes of that is its doing.
    void Show();
    /// From here on sizes that differ by so much are the same: at a broken scale the window manager may not be able to
    /// give every logical size.
    void SetSlack(int32 slack) { fSlack = slack; }
    /// The scale of the screen changed: the system's window is about to get the size of Frame() anew, its content's
    /// corner here. What the window manager makes of that is no wish of the user's: Frame() stays, also when it gives
    /// another size, and so does its place until the window moves after kScaleGrace.
    void Rescale(int32 left, int32 top, bigtime_t now);
    /// It came to a screen of another scale, where it still covers as many pixels of the screen as before: Frame()
    /// keeps its size, which is no longer that of what is reported, until the next Ask, Show or Release. Its place is
    /// the user's.
    void HoldSize();
    /// What is reported counts again.
    void Release();
    /// Whether the system's window has the size of Frame() now.
    bool HasWantedSize() const;
    /// The window manager reports a size, or a place. @return whether Frame() or Content() changed
    bool ReportSize(int32 width, int32 height, bigtime_t now);
    bool ReportPlace(int32 left, int32 top, bigtime_t now);
    /// It became maximised or full screen, or ceased to be so. @return whether the system's window is to get Frame()
    /// now
    bool SetZoomed(bool zoomed, bigtime_t now);
    /// To be called kGrace after Ask, Show and SetZoomed(false), and kScaleGrace after Rescale.
    /// @param limit  what the screen has room for
    /// @return whether Content() changed
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
    bool fRescaling = false; ///< what is pending was asked for by Rescale
    bool fElsewhere = false; ///< Rescale chose the place, nobody has moved it since
    bigtime_t fRescaled = 0; ///< when
};

} // namespace kits
