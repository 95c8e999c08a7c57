// SPDX-License-Identifier: MIT
#include "kits/application/teams/Frame.h"

#include <bit>
#include <cstring>

namespace kits {

namespace {

static_assert(std::endian::native == std::endian::little, "numbers travel as they lie in memory");

constexpr std::string_view kMagic = "kits";
constexpr size_t kLengthSize = 4;
constexpr size_t kMessageHead = 1 + 8 + 8 + 4; // flags, reply address, number of targets
constexpr uint8 kNewestWins = 1;
constexpr uint8 kSourceWaits = 2;

template <class T> void Append(std::string* bytes, const T& value)
{
    bytes->append(reinterpret_cast<const char*>(&value), sizeof(value));
}

/// Takes a value from the front. Returns false if there are too few bytes.
template <class T> bool Take(std::string_view* bytes, T* value)
{
    if (bytes->size() < sizeof(T))
        return false;
    memcpy(value, bytes->data(), sizeof(T));
    bytes->remove_prefix(sizeof(T));
    return true;
}

std::string FrameOf(FrameKind kind, const std::string& content, size_t following = 0)
{
    std::string frame;
    Append(&frame, static_cast<uint32>(1 + content.size() + following));
    Append(&frame, kind);
    return frame + content;
}

} // namespace

std::string HelloFrame(team_address sender)
{
    std::string content(kMagic);
    Append(&content, kProtocolVersion);
    Append(&content, sender);
    return FrameOf(FrameKind::kHello, content);
}

std::string NumberFrame(FrameKind kind, uint64 number)
{
    std::string content;
    Append(&content, number);
    return FrameOf(kind, content);
}

std::string MessageFrameHead(const MessageFrame& frame, size_t messageSize)
{
    std::string content;
    Append(&content, static_cast<uint8>((frame.newestWins ? kNewestWins : 0) | (frame.sourceWaits ? kSourceWaits : 0)));
    Append(&content, frame.replyTo.team);
    Append(&content, frame.replyTo.token);
    Append(&content, static_cast<uint32>(frame.targets.size()));
    content.append(reinterpret_cast<const char*>(frame.targets.data()), frame.targets.size() * sizeof(token_t));
    return FrameOf(FrameKind::kMessage, content, messageSize);
}

bool FitsFrame(size_t countTargets, size_t messageSize)
{
    const size_t head = 1 + kMessageHead + countTargets * sizeof(token_t);
    return countTargets > 0 && countTargets <= bounds::kMostTargets &&
           (countTargets == 1 || messageSize <= bounds::kMostShared) && messageSize <= bounds::kMostFrame - head;
}

std::optional<team_address> ReadHello(std::string_view content)
{
    uint32 version;
    team_address team;
    if (!content.starts_with(kMagic))
        return {};
    content.remove_prefix(kMagic.size());
    if (!Take(&content, &version) || version != kProtocolVersion || !Take(&content, &team) || !content.empty())
        return {};
    return team;
}

std::optional<uint64> ReadNumber(std::string_view content)
{
    uint64 number;
    if (!Take(&content, &number) || !content.empty())
        return {};
    return number;
}

std::optional<MessageFrame> ReadMessageFrame(std::string_view content, std::string_view* message)
{
    MessageFrame frame;
    uint8 flags;
    uint32 count;
    if (!Take(&content, &flags) || (flags & ~(kNewestWins | kSourceWaits)) != 0 ||
        !Take(&content, &frame.replyTo.team) || !Take(&content, &frame.replyTo.token) || !Take(&content, &count) ||
        count == 0 || count > bounds::kMostTargets || content.size() < count * sizeof(token_t))
        return {};
    frame.newestWins = (flags & kNewestWins) != 0;
    frame.sourceWaits = (flags & kSourceWaits) != 0;
    frame.targets.resize(count);
    for (token_t& target : frame.targets)
        Take(&content, &target);
    if (count > 1 && content.size() > bounds::kMostShared)
        return {};
    *message = content;
    return frame;
}

void FrameReader::Add(std::string_view bytes)
{
    fBytes.erase(fBytes.begin(), fBytes.begin() + static_cast<ptrdiff_t>(fPlace));
    fPlace = fLastPlace = 0;
    // Reserves exactly, because the memory is counted.
    if (fBytes.size() + bytes.size() > fBytes.capacity())
        fBytes.reserve(fBytes.size() + bytes.size());
    fBytes.insert(fBytes.end(), bytes.begin(), bytes.end());
}

void FrameReader::Trim()
{
    // Does not keep the memory of one long frame for all the short ones after it.
    constexpr size_t kKept = 4096;
    if (fBytes.capacity() <= kKept || Waiting() > fBytes.capacity() / 2)
        return;
    std::vector<char> rest;
    rest.reserve(Waiting());
    rest.assign(fBytes.begin() + static_cast<ptrdiff_t>(fPlace), fBytes.end());
    fBytes.swap(rest);
    fPlace = fLastPlace = 0;
}

size_t FrameReader::Missing() const
{
    std::string_view rest(fBytes.data() + fPlace, Waiting());
    uint32 length;
    return Take(&rest, &length) && length <= fLimit && length > rest.size() ? length - rest.size() : 0;
}

FrameReader::Result FrameReader::Next(FrameKind* kind, std::string_view* content)
{
    std::string_view rest(fBytes.data() + fPlace, Waiting());
    uint32 length;
    if (!Take(&rest, &length))
        return Result::kNone;
    if (length == 0 || length > fLimit)
        return Result::kBroken;
    if (rest.size() < length)
        return Result::kNone;
    *content = rest.substr(0, length);
    Take(content, kind);
    fLastPlace = fPlace;
    fPlace += kLengthSize + length;
    ++fCountFrames;
    return Result::kFrame;
}

} // namespace kits
