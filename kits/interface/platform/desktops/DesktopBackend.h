// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/support/Color.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kits {

/// One way to read and to paint the empty desktop: an X server's, or a desktop environment's. Only the thread of
/// DesktopWatch uses it; it may wait for other processes.
class DesktopBackend {
public:
    virtual ~DesktopBackend() = default;

    /// The name of this way in the kept file.
    virtual const char* Name() const = 0;
    /// False if the desktop does not answer; then it can be neither read nor painted.
    virtual bool IsThere() const { return true; }

    /// Returns the colour that the desktop shows, or the average of its picture; nothing if that cannot be found out.
    virtual std::optional<rgb_color> Read() = 0;

    /// Every setting that Paint will change, with its value if it has one, so that Restore can restore it, also in
    /// another process. Changes nothing.
    /// @return nothing if the desktop could not be restored; the caller does not paint it then
    virtual std::optional<BMessage> Keep() = 0;
    /// Shows the colour in place of everything else. Called after Keep, and again for each new colour.
    /// @param kept  the result of Keep
    virtual bool Paint(rgb_color color, const BMessage& kept) = 0;
    /// Restores the kept settings, except those that another program has changed since.
    /// @return false if some could not be restored
    virtual bool Restore(const BMessage& kept) = 0;
    /// Sets the colour for good, as the desktop's own settings program does. From then on it counts as the user's.
    /// @param kept  the result of Keep while the desktop is painted, else null; none of it is restored any more
    virtual bool Change(rgb_color color, const BMessage* kept) = 0;
    /// True if the desktop still has the colour that was painted.
    virtual bool IsPainted() const = 0;
    /// True if the paint would still be there after the session.
    virtual bool OutlivesSession() const = 0;

    /// Descriptors that become readable when something has changed.
    virtual std::vector<int> Descriptors() const = 0;
    /// Reads the news since the last call, without waiting.
    /// @return true if the colour may have changed
    virtual bool TakeNews() = 0;
    /// True if the colour may change without any news.
    virtual bool NeedsLooking() const { return false; }
};

/// The way of this session. Null where there is none: then only this process knows the colour.
/// @param isX11   true if the display is an X server, whose root window can be painted
/// @param screen  the X server's name of the main monitor
std::unique_ptr<DesktopBackend> MakeDesktopBackend(bool isX11, const std::string& screen = "");

} // namespace kits
