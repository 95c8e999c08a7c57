// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/desktops/DesktopBackend.h"
#include "kits/interface/platform/desktops/DesktopRestore.h"
#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Threads.h"

#include <functional>
#include <mutex>

namespace kits {

/// The desktop's colour as this process knows it, and the thread that keeps it up to date and paints the desktop. No
/// call waits: only the thread talks to the X server and runs the desktop's tools. Of several colours that are set in a
/// row it paints the newest.
///
/// It saves and restores the desktop's settings through DesktopRestore. If a killed program has left the desktop
/// painted, the thread restores that first.
///
/// Any thread, but made and destroyed by the main thread.
class DesktopWatch {
public:
    using Maker = std::function<std::unique_ptr<DesktopBackend>()>;
    using Answer = std::function<void(rgb_color)>;

    /// Starts the thread, unless `make` is null.
    /// @param make     makes the desktop, on the thread; is null, or returns null, if there is none to read or paint
    /// @param unknown  the colour until the desktop has been read
    /// @param changed  called, on any thread, when the result of Get() changes; may be null
    DesktopWatch(Maker make, rgb_color unknown, std::function<void()> changed = nullptr);
    /// Waits until the thread has finished its current step; if that is reading a picture, the thread gives it up. A
    /// desktop that is still painted then is restored at the next start.
    ~DesktopWatch();
    DesktopWatch(const DesktopWatch&) = delete;
    DesktopWatch& operator=(const DesktopWatch&) = delete;

    /// The last known colour.
    rgb_color Get();
    /// Sets the colour that Get() returns from now on, and paints the desktop.
    /// @param permanent  false: only this process knows the colour if the desktop's paint would outlive the session
    void Set(rgb_color color, bool permanent);
    /// Has the desktop restored; Get() returns the colour from before the first Set.
    void Restore();
    /// Sets the desktop's colour for good: Get() returns it, and later calls of Restore go back to it.
    void Change(rgb_color color);

    /// Reads the desktop again, after all orders before this one, and answers with its colour.
    /// @param answer  called once: on the thread, which may be busy for seconds, or at once if there is no desktop.
    ///                Never called if the watch is destroyed first.
    void Ask(Answer answer);

private:
    enum class Order { kNone, kPaint, kRestore, kChange, kLook };

    void Run();
    /// Carries out the newest order.
    /// @return false if there was none
    bool Obey();
    /// Reads the desktop, unless it shows our own paint.
    /// @return the colour that it shows
    std::optional<rgb_color> HearNews();
    std::optional<rgb_color> Look();
    static void AnswerAll(const std::vector<Answer>& answers, rgb_color color);
    void Give(Order order);
    void WaitForNews();
    /// Runs a function under the lock, and calls fChanged if Get() gives another colour afterwards.
    template <class Function> void Update(Function function);

    const Maker fMake;
    const std::function<void()> fChanged;
    FileDescriptor fWake; ///< an eventfd
    FileDescriptor fEnd;  ///< an eventfd, readable from the beginning of the destructor
    thread_id fThread = -1;

    std::mutex fLock; ///< guards the members below; never held over a wait
    rgb_color fColor;
    std::optional<rgb_color> fBefore; ///< while a colour of ours is set
    Order fOrder = Order::kNone;      ///< the newest one that the thread has not seen yet
    bool fEnding = false;
    bool fIsBlind = false; ///< there is no desktop
    std::vector<Answer> fAnswers;
    rgb_color fOrdered{};
    bool fPermanent = true;
    bool fNeedsLooking = false;
    bigtime_t fLooked = 0;

    // The thread's own.
    std::unique_ptr<DesktopBackend> fBackend;
    std::optional<DesktopRestore> fRestore; ///< of that desktop
};

} // namespace kits
