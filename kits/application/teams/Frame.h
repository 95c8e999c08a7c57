// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/Token.h"
#include "kits/kernel/Bounds.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kits {

/// What teams say to each other on a connection: frames, each with its length before it. All numbers little-endian.
///
///     uint32  how many bytes follow
///     uint8   kind
///     ...     what belongs to the kind
///
/// Who connects sends `kHello` first, then messages and pings; the other side sends back nothing but `kPong`, `kGone`
/// and `kClosed`. So a connection carries messages one way, and two teams that speak to each other have two.
enum class FrameKind : uint8 {
    kHello = 1, ///< "kits", uint32 kProtocolVersion, uint64 address of the sender
    kMessage,   ///< see MessageFrame
    kPing,      ///< uint64 number
    kPong,      ///< uint64 number: of a ping, when the main loop has come by
    kGone,      ///< int64 token: there is no such handler (any more)
    kClosed     ///< uint64 CloseReason: the last thing that is said
};

/// Why the side that was connected to ends a connection.
enum class CloseReason : uint64 {
    kNoHello = 1,        ///< within the time for it
    kBadHello,           ///< not ours, or of another process than the one that is connected
    kBadFrame,           ///< breaks the rules above, is too long, or holds no valid message
    kSlowFrame,          ///< not whole within the time for it
    kTooManyConnections, ///< of that process
    kUnreadAnswers,      ///< more than are kept
    kReplaced            ///< by a newer connection of the same team
};

inline constexpr uint32 kProtocolVersion = 1;

/// A message on its way to handlers of one team:
///     uint8 flags, uint64 and int64 address for answers, uint32 number of targets, int64 each target's token, and
///     the flattened message to the end
struct MessageFrame {
    bool newestWins = false;
    bool sourceWaits = false;
    Address replyTo;
    std::vector<token_t> targets;
};

/// The frames without what follows them.
std::string HelloFrame(team_address sender);
std::string NumberFrame(FrameKind kind, uint64 number);
/// All of the frame up to the flattened message, which has this size. Together they may be longer than a frame can be,
/// see FitsFrame.
std::string MessageFrameHead(const MessageFrame& frame, size_t messageSize);

/// Whether a frame for so many handlers can hold a flattened message of this size.
bool FitsFrame(size_t countTargets, size_t messageSize);

/// What a frame holds, with `kind` read already. None of these believes anything; empty for what is not exactly right.
std::optional<team_address> ReadHello(std::string_view content);
std::optional<uint64> ReadNumber(std::string_view content);
/// @param message  gets the flattened message, a part of `content`
std::optional<MessageFrame> ReadMessageFrame(std::string_view content, std::string_view* message);

/// Cuts what comes from a stream into frames. Its memory grows with what has come, never with what was only announced.
class FrameReader {
public:
    enum class Result { kNone, kFrame, kBroken };

    /// Frames that are longer are broken: bounds::kMostFrame at most, less as long as the other side is a stranger.
    void SetLimit(size_t limit) { fLimit = limit; }
    /// Takes what has come.
    void Add(std::string_view bytes);
    /// The next whole frame; its content is valid until the next call of Add or Trim.
    Result Next(FrameKind* kind, std::string_view* content);
    /// The last frame comes once more with the next call of Next. Before any other call.
    void PutBack() { fPlace = fLastPlace; }
    /// Gives up the memory of the frames that were cut, but for a little.
    void Trim();

    /// The bytes that have come and were not cut into frames yet.
    size_t Waiting() const { return fBytes.size() - fPlace; }
    /// How many bytes of the next frame are still to come, as far as that is known; 0 if it is not.
    size_t Missing() const;
    /// How many frames were cut so far.
    uint64 CountFrames() const { return fCountFrames; }
    /// The memory that it takes.
    size_t Capacity() const { return fBytes.capacity(); }

private:
    std::vector<char> fBytes;
    size_t fPlace = 0;     ///< of the next frame
    size_t fLastPlace = 0; ///< of the one before
    uint64 fCountFrames = 0;
    size_t fLimit = bounds::kMostFrame;
};

} // namespace kits
