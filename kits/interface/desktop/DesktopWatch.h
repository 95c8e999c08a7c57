#pragma once

#include "kits/interface/desktop/DesktopBackend.h"
#include "kits/interface/desktop/DesktopKept.h"
#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Threads.h"

#include <functional>
#include <mutex>

namespace kits {

/// What this process knows of the desktop's colour, and the thread that keeps it true and paints the desktop. Asking
/// and setting never wait: the thread is the one that talks to the X server and runs the desktop's tools. Of several
/// colours that are set in a row the newest is painted.
///
/// Before the desktop is painted for the first time everything that will change is kept (DesktopKept); Restore puts it
/// back. What a killed program left painted is put back before anything else.
///
/// Any thread, but made and destroyed by the main thread.
class DesktopWatch {
public:
    using Maker = std::function<std::unique_ptr<DesktopBackend>()>;
    using Answer = std::function<void(rgb_color)>;

    /// Starts the thread, if there is something to make.
    /// @param make     called on the thread; null, or null from it, when there is no desktop to read or paint
    /// @param unknown  the colour while nothing is known
    /// @param changed  called, on any thread, when Get() gives another colour than before; may be null
    DesktopWatch(Maker make, rgb_color unknown, std::function<void()> changed = nullptr);
    /// Waits until what is under way is done, but for a picture, which is given up. What is still painted then is put
    /// back at the next start.
    ~DesktopWatch();
    DesktopWatch(const DesktopWatch&) = delete;
    DesktopWatch& operator=(const DesktopWatch&) = delete;

    /// The last known one.
    rgb_color Get();
    /// What Get() gives from here on, and has the desktop painted.
    /// @param permanent  whether it may be painted by what outlives the session; else it is known here only
    void Set(rgb_color color, bool permanent);
    /// Get() gives what it did before the first Set, and the desktop is put back.
    void Restore();
    /// Sets the desktop's colour for good: Get() gives it, and a Restore goes back no further than to here.
    void Change(rgb_color color);

    /// Has the desktop looked at anew, after everything that was ordered before, and gives the colour that is there
    /// now.
    /// @param answer  called once: on the thread, which may be busy for seconds; at once where there is no desktop.
    ///                Never when the watch is destroyed before.
    void Ask(Answer answer);

private:
    enum class Order { kNone, kPaint, kRestore, kChange, kLook };

    static int32 ThreadEntry(void* self);
    void Run();
    /// Does what was ordered last. False when that was all.
    bool Obey();
    void Paint(rgb_color color, bool permanent);
    void ChangeForGood(rgb_color color);
    bool Keep();
    void PutBack();
    /// @return whether nothing is left to put back
    bool PutBackLeft();
    /// Reads the desktop, unless it shows our own paint.
    /// @return what it shows
    std::optional<rgb_color> HearNews();
    std::optional<rgb_color> Look();
    static void AnswerAll(const std::vector<Answer>& answers, rgb_color color);
    void Give(Order order);
    void WaitForNews();
    /// The colour was found to be another under the lock, which alone tells whose change it was.
    void SayIf(bool isChanged);

    const Maker fMake;
    const std::function<void()> fChanged;
    FileDescriptor fWake; ///< an eventfd
    FileDescriptor fEnd;  ///< an eventfd, readable from the destructor's beginning
    thread_id fThread = -1;

    std::mutex fLock; ///< guards what follows; never held over a wait
    rgb_color fColor;
    std::optional<rgb_color> fBefore; ///< while a colour of ours is set
    Order fOrder = Order::kNone;      ///< the newest that the thread has not yet seen
    bool fEnding = false;
    bool fIsBlind = false; ///< there is no desktop
    std::vector<Answer> fAnswers;
    rgb_color fOrdered{};
    bool fPermanent = true;
    bool fNeedsLooking = false;
    bigtime_t fLooked = 0;

    // The thread's own.
    std::unique_ptr<DesktopBackend> fBackend;
    std::optional<BMessage> fPainted; ///< what was kept, while the desktop is painted
    DesktopKept fKept;
};

} // namespace kits
