// SPDX-License-Identifier: MIT
#include "tests/hostile/Mutations.h"

#include "tests/hostile/Door.h"
#include "tests/hostile/Mutator.h"

#include <sys/socket.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBatch = 64;
constexpr auto kPatience = std::chrono::seconds(60);
constexpr auto kTimeBetweenReports = std::chrono::seconds(5);

/// Uses one connection after the other.
class Sender {
public:
    explicit Sender(const Door& door)
        : fDoor(door)
    {
    }

    /// Sends frames that are all good, except possibly the last one, and waits until all have been read.
    /// @param endsBad  the last one is bad
    /// @return whether they have been read: otherwise the connection was closed before, or nothing arrives any more
    bool Send(const std::string& frames, bool endsBad)
    {
        if (!fSocket.IsOpen() && !Connect())
            return false;
        if (endsBad) {
            // After a length that is too large, the other side would wait for more.
            Door::SendAll(fSocket, frames);
            shutdown(fSocket.Get(), SHUT_WR);
            const bool isClosed = Await([this] { return !Door::Read(fSocket); });
            fSocket.Close();
            return isClosed;
        }
        const std::string pong = kits::NumberFrame(kits::FrameKind::kPong, ++fPing);
        std::string received;
        bool isOpen =
            Door::SendAll(fSocket, frames) && Door::SendAll(fSocket, kits::NumberFrame(kits::FrameKind::kPing, fPing));
        const bool isAnswered = isOpen && Await([&] {
                                    isOpen = Door::Read(fSocket, &received);
                                    return !isOpen || received.find(pong) != std::string::npos;
                                });
        if (isOpen && isAnswered)
            return true;
        fSocket.Close();
        return false;
    }

private:
    bool Connect()
    {
        fSocket = fDoor.Connect();
        if (fSocket.IsOpen() && Door::SendAll(fSocket, kits::HelloFrame(Door::Name(0))))
            return true;
        fSocket.Close();
        return false;
    }

    template <class Condition> bool Await(const Condition& condition) const
    {
        const auto end = Clock::now() + kPatience;
        while (!condition()) {
            if (Clock::now() > end)
                return false;
            Door::Wait(fSocket, false);
        }
        return true;
    }

    const Door& fDoor;
    kits::FileDescriptor fSocket;
    uint64 fPing = 1ULL << 40; ///< numbers that no mutated ping has
};

/// Reads and discards every answer.
class Listener {
public:
    explicit Listener(const Door& door)
        : fDoor(door)
        , fSocket(door.Listen(Door::Name(0)))
    {
    }
    ~Listener() { fDoor.Leave(Door::Name(0)); }

    void Read()
    {
        kits::FileDescriptor socket(accept4(fSocket.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (socket.IsOpen())
            fConnections.push_back(std::move(socket));
        std::erase_if(fConnections, [](const kits::FileDescriptor& connection) { return !Door::Read(connection); });
    }

private:
    const Door& fDoor;
    kits::FileDescriptor fSocket;
    std::vector<kits::FileDescriptor> fConnections;
};

} // namespace

int SendMutations(const char* signature, const char* recorded, uint64 count, uint32 seed)
{
    std::ifstream file(recorded, std::ios::binary);
    const std::string frames((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const Door door(signature);
    Attacker attacker(door);
    Listener listener(door);
    Sender sender(door);
    Mutator mutator(frames, {Door::Name(0), 7}, seed);
    uint64 countRead = 0;
    auto reportAt = Clock::now();
    while (countRead < count && !attacker.IsOver()) {
        std::string batch;
        bool isGood = true;
        uint64 size = 0;
        while (isGood && size < kBatch) {
            const Mutator::Made made = mutator.Next();
            batch += made.bytes;
            isGood = made.isGood;
            ++size;
        }
        if (sender.Send(batch, !isGood))
            countRead += size;
        listener.Read();
        attacker.Count("batches");
        if (Clock::now() >= reportAt) {
            std::printf("%llu frames\n", static_cast<unsigned long long>(countRead));
            std::fflush(stdout);
            reportAt = Clock::now() + kTimeBetweenReports;
        }
    }
    std::printf("%llu frames read\n", static_cast<unsigned long long>(countRead));
    return countRead >= count ? 0 : 1;
}
