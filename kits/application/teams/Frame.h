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

/// The frames that teams send each other on a connection, each preceded by its length. All numbers are little-endian.
///
///     uint32  number of bytes that follow
///     uint8   kind
///     ...     content, by kind
///
/// The team that connects sends `kHello` first, then messages and pings; the other side sends only `kPong`, `kGone` and
/// `kClosed`. So a connection carries messages one way, and two teams that talk to each other have two connections.
enum class FrameKind : uint8 {
    kHello = 1, ///< "kits", uint32 kProtocolVersion, uint64 address of the sender
    kMessage,   ///< see MessageFrame
    kPing,      ///< uint64 number
    kPong,      ///< uint64 number of the ping, once the main loop has run
    kGone,      ///< int64 token: this handler does not exist, or not any more
    kClosed     ///< uint64 CloseReason: the last frame
};

/// Why the accepting side ends a connection.
enum class CloseReason : uint64 {
    kNoHello = 1,        ///< not within its time limit
    kBadHello,           ///< not ours, or the name of another process than the connected one
    kBadFrame,           ///< breaks the rules above, is too long, or holds no valid message
    kSlowFrame,          ///< incomplete after its time limit
    kTooManyConnections, ///< from that process
    kUnreadAnswers,      ///< more than we keep
    kReplaced            ///< by a newer connection of the same team
};

inline constexpr uint32 kProtocolVersion = 1;

/// A message to handlers of one team:
///     uint8 flags, uint64 and int64 reply address, uint32 number of targets, int64 token of each target, and
///     then the flattened message
struct MessageFrame {
    bool newestWins = false;
    bool sourceWaits = false;
    Address replyTo;
    std::vector<token_t> targets;
};

/// Frames without content after their head.
std::string HelloFrame(team_address sender);
std::string NumberFrame(FrameKind kind, uint64 number);
/// Returns everything of the frame before the flattened message, which has this size. Together they may exceed the
/// limit for a frame, see FitsFrame.
std::string MessageFrameHead(const MessageFrame& frame, size_t messageSize);

/// Returns whether a frame for this many handlers can hold a flattened message of this size.
bool FitsFrame(size_t countTargets, size_t messageSize);

/// Read the content of a frame whose `kind` was read already. None of these trusts the content; the result is empty
/// unless it is exactly right.
std::optional<team_address> ReadHello(std::string_view content);
std::optional<uint64> ReadNumber(std::string_view content);
/// @param message  receives the flattened message, a part of `content`
std::optional<MessageFrame> ReadMessageFrame(std::string_view content, std::string_view* message);

/// Splits a byte stream into frames. Its memory grows with the received bytes, never with an announced length.
class FrameReader {
public:
    enum class Result { kNone, kFrame, kBroken };

    /// Sets the length above which frames are invalid: bounds::kMostFrame at most, less as long as the other side is a
    /// stranger.
    void SetLimit(size_t limit) { fLimit = limit; }
    /// Adds received bytes.
    void Add(std::string_view bytes);
    /// Reads the next complete frame; its content is valid until the next call of Add or Trim.
    Result Next(FrameKind* kind, std::string_view* content);
    /// Makes the next call of Next return the last frame once more. Call it before any other call.
    void PutBack() { fPlace = fLastPlace; }
    /// Releases the memory of the frames that were read, except for a little.
    void Trim();

    /// The number of received bytes that are not part of a read frame.
    size_t Waiting() const { return fBytes.size() - fPlace; }
    /// Returns how many bytes of the next frame are missing, as far as that is known; 0 if it is not.
    size_t Missing() const;
    /// The number of frames read so far.
    uint64 CountFrames() const { return fCountFrames; }
    /// The memory that it uses.
    size_t Capacity() const { return fBytes.capacity(); }

private:
    std::vector<char> fBytes;
    size_t fPlace = 0;     ///< of the next frame
    size_t fLastPlace = 0; ///< of the previous frame
    uint64 fCountFrames = 0;
    size_t fLimit = bounds::kMostFrame;
};

} // namespace kits
