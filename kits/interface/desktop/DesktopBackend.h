#pragma once

#include "kits/application/Message.h"
#include "kits/support/Color.h"

#include <memory>
#include <optional>
#include <vector>

namespace kits {

/// One way to read and to paint the empty desktop: that of an X server, or of a desktop environment. Used by one thread
/// only, DesktopWatch's; may wait for other processes.
class DesktopBackend {
public:
    virtual ~DesktopBackend() = default;

    /// Names it in what is kept.
    virtual const char* Name() const = 0;

    /// The colour that is shown, over a picture the picture's average; nothing when it cannot be told.
    virtual std::optional<rgb_color> Read() = 0;

    /// Everything that Paint will change, with its value or that it has none, so that Restore can put it back, in
    /// another process too. Changes nothing. Nothing when it could not be put back: then it is not painted.
    virtual std::optional<BMessage> Keep() = 0;
    /// Shows the colour in place of everything else. Called after Keep, again for each new colour.
    /// @param kept  what Keep gave
    virtual bool Paint(rgb_color color, const BMessage& kept) = 0;
    /// Puts back what was kept. What somebody else has set meanwhile is left to them.
    /// @return whether there is nothing left to put back
    virtual bool Restore(const BMessage& kept) = 0;
    /// Sets the colour for good, as the desktop's own settings do: it counts as somebody else's from then on.
    /// @param kept  what Keep gave, while the desktop is painted, else null; nothing of it will be put back any more
    virtual bool Change(rgb_color color, const BMessage* kept) = 0;
    /// True if the desktop still has the colour that was painted.
    virtual bool IsPainted() const = 0;
    /// Whether what is painted would be there after the session too.
    virtual bool OutlivesSession() const = 0;

    /// What becomes readable when something has changed.
    virtual std::vector<int> Descriptors() const = 0;
    /// Takes in what has come since; doesn't wait. True when the colour may be another.
    virtual bool TakeNews() = 0;
    /// Whether the colour may change without any news.
    virtual bool NeedsLooking() const { return false; }
};

/// The one for this session, null where there is none: then the colour is known to this process only.
/// @param platform  what the toolkit draws on: "xcb", "wayland", ...
/// @param screen    the main monitor, as the X server calls it
std::unique_ptr<DesktopBackend> MakeDesktopBackend(const std::string& platform, const std::string& screen = "");

} // namespace kits
