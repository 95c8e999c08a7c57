// SPDX-License-Identifier: MIT
#include "kits/application/InterfaceLock.h"
#include "kits/application/Looper.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/teams/Visitors.h"
#include "tests/fuzz/ScriptRun.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

// Peers that connect to this team, one process under many names: correct and wrong hellos, halves of frames, floods,
// answers that nobody reads, and time that passes. No claim exceeds the limits; every message of a peer that keeps to
// the rules gets through, once and in order; and in the end everything is given back.

namespace {

using kits::Resource;
using namespace std::chrono_literals;

constexpr size_t kMostPeers = 12;
constexpr size_t kCountHandlers = 3;

/// Small limits, so that a short script reaches them.
kits::PeerAccounts::Table Table()
{
    kits::PeerAccounts::Table table{};
    table[static_cast<size_t>(Resource::kConnections)] = {5, 5, 0};
    table[static_cast<size_t>(Resource::kIncomplete)] = {256 * 1024, 256 * 1024, 0};
    table[static_cast<size_t>(Resource::kUnsent)] = {8 * 1024, 8 * 1024, 0};
    table[static_cast<size_t>(Resource::kUnhandled)] = {8, 8, 0};
    table[static_cast<size_t>(Resource::kUnhandledBytes)] = {4 * 1024 * 1024, 4 * 1024 * 1024, 0};
    return table;
}

/// Records its messages, as numbers.
class Counter : public BHandler {
public:
    void MessageReceived(BMessage* message) override
    {
        int32 number = 0;
        if (message->FindInt32("number", &number) == B_OK)
            fNumbers.push_back(number);
    }
    std::vector<int32>& Numbers() { return fNumbers; }

private:
    std::vector<int32> fNumbers;
};

std::array<Counter, kCountHandlers>* sHandlers;

/// A peer that has connected, and what it knows.
struct Peer {
    kits::FileDescriptor socket;
    std::string unsent;  ///< the rest of a frame that the socket did not take
    bool isRight = true; ///< it has kept to the rules
    bool hasSaidHello = false;
    std::array<std::vector<int32>, kCountHandlers> sent;
};

class Run {
public:
    Run()
        : fAccounts([this] { NoteRoom(); }, Table())
        , fVisitors(&fAccounts, Hooks())
    {
        kits::FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        // Without a name, the system chooses one.
        Expect(bind(listener.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(sa_family_t)) == 0);
        Expect(listen(listener.Get(), 16) == 0);
        fAddressSize = sizeof(fAddress);
        Expect(getsockname(listener.Get(), reinterpret_cast<sockaddr*>(&fAddress), &fAddressSize) == 0);
        fVisitors.SetListener(std::move(listener));
    }

    ~Run()
    {
        fVisitors.Clear();
        while (kits::PostOffice::Get().HasMessages())
            kits::PostOffice::Get().DispatchNext(kits::PostOffice::Get().BeginTurn());
        for (const Resource resource : kResources)
            Expect(fAccounts.UsedByAll(resource) == 0);
        Expect(fAccounts.CountProcesses() == 0);
        for (Counter& handler : *sHandlers)
            handler.Numbers().clear();
    }

    void Step(Script* script)
    {
        const uint8_t what = script->Byte();
        Peer* peer = fPeers.empty() ? nullptr : fPeers[what / 16 % fPeers.size()].get();
        switch (what % 16) {
        case 0:
            Connect();
            break;
        case 1:
            SayHello(peer, kits::ThisTeam());
            break;
        case 2:
            SayHello(peer, script->Byte());
            break;
        case 3:
        case 4:
        case 5:
            SendMessage(peer, script);
            break;
        case 6:
            SendNumbers(peer, script->Byte(), kits::FrameKind::kPing);
            break;
        case 7:
            SendRaw(peer, script);
            break;
        case 8:
            Read(peer, script->Size(64 * 1024) + 1);
            break;
        case 9:
            if (peer != nullptr) {
                peer->socket.Close();
                peer->isRight = false;
            }
            break;
        case 10:
            fNow += 20ms * script->Byte();
            break;
        case 11:
            MainTurn();
            break;
        case 12:
            Dispatch(script->Byte() % 8);
            break;
        case 13:
            AnswerPings();
            break;
        default:
            PortTurn();
        }
        Check();
    }

    /// Everybody reads, and the main thread works: everything is done for each peer that has kept to the rules.
    void Finish()
    {
        // A read that completes no frame is invisible. The longest frame takes two reads, and the main thread reads in
        // every second turn.
        for (int quiet = 0, turns = 0; quiet < 8; ++turns) {
            Expect(turns < 4000); // nothing stalls or goes in circles
            bool isMoving = false;
            for (const auto& peer : fPeers) {
                isMoving = isMoving || (!peer->unsent.empty() && peer->socket.IsOpen());
                Push(peer.get());
                isMoving = Read(peer.get(), 64 * 1024) > 0 || isMoving;
            }
            if (turns % 2 == 0)
                MainTurn();
            PortTurn();
            isMoving = isMoving || kits::PostOffice::Get().HasMessages() || fIsPingWaiting || fIsWoken;
            Dispatch(1000);
            AnswerPings();
            Check();
            quiet = isMoving ? 0 : quiet + 1;
        }
        for (size_t i = 0; i < kCountHandlers; ++i) {
            std::vector<int32>& got = (*sHandlers)[i].Numbers();
            for (const auto& peer : fPeers) {
                if (!peer->isRight || !peer->hasSaidHello)
                    continue;
                // In this order, interleaved with those of others.
                auto place = got.begin();
                for (const int32 number : peer->sent[i]) {
                    place = std::find(place, got.end(), number);
                    Expect(place != got.end());
                    ++place;
                }
            }
            std::sort(got.begin(), got.end());
            Expect(std::adjacent_find(got.begin(), got.end()) == got.end());
        }
    }

private:
    static constexpr Resource kResources[] = {Resource::kConnections, Resource::kIncomplete, Resource::kUnsent,
                                              Resource::kUnhandled, Resource::kUnhandledBytes};

    kits::Visitors::Hooks Hooks()
    {
        return {[this] { fIsWoken = true; }, [](kits::team_address) {},
                [this] {
                    Expect(!fIsPingWaiting); // at most one action waits, however many pings come
                    fIsPingWaiting = true;
                },
                [](kits::team_address) {}, [this] { return fNow; }};
    }

    void NoteRoom() { fVisitors.NoteRoom(); }

    void Connect()
    {
        if (fPeers.size() == kMostPeers)
            return;
        auto peer = std::make_unique<Peer>();
        peer->socket = kits::FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        if (connect(peer->socket.Get(), reinterpret_cast<const sockaddr*>(&fAddress), fAddressSize) == 0)
            fPeers.push_back(std::move(peer));
    }

    void SayHello(Peer* peer, kits::team_address team)
    {
        if (peer == nullptr)
            return;
        // A newer connection of the same team replaces the previous one.
        const bool isRight = team == kits::ThisTeam() && !peer->hasSaidHello;
        for (const auto& other : fPeers)
            if (isRight && other.get() != peer && other->hasSaidHello)
                other->isRight = false;
        peer->isRight = peer->isRight && isRight;
        peer->hasSaidHello = true;
        Send(peer, kits::HelloFrame(team));
    }

    void SendMessage(Peer* peer, Script* script)
    {
        const uint8_t flags = script->Byte();
        if (peer == nullptr || peer->unsent.size() > 256 * 1024)
            return;
        BMessage message('fuzz');
        const int32 number = ++fLastNumber;
        message.AddInt32("number", number);
        const std::string padding(script->Size(16 * 1024), '.');
        message.AddData("padding", 'TEXT', padding.data(), static_cast<ssize_t>(padding.size()), false);
        std::string flat(static_cast<size_t>(message.FlattenedSize()), '\0');
        message.Flatten(flat.data(), static_cast<ssize_t>(flat.size()));
        kits::MessageFrame frame;
        frame.newestWins = (flags & 1) != 0;
        for (size_t i = 0; i < kCountHandlers; ++i)
            if ((flags & (2U << i)) != 0)
                frame.targets.push_back((*sHandlers)[i].Token());
        if ((flags & 0x10) != 0)
            frame.targets.insert(frame.targets.end(), flags >> 5, 1'000'000'000);
        if (frame.targets.empty())
            frame.targets.push_back(1'000'000'000);
        peer->isRight = peer->isRight && peer->hasSaidHello;
        for (size_t i = 0; i < kCountHandlers; ++i)
            if (peer->isRight && !frame.newestWins && (flags & (2U << i)) != 0)
                peer->sent[i].push_back(number);
        Send(peer, kits::MessageFrameHead(frame, flat.size()) + flat);
    }

    void SendNumbers(Peer* peer, int count, kits::FrameKind kind)
    {
        if (peer == nullptr || peer->unsent.size() > 256 * 1024)
            return;
        peer->isRight = peer->isRight && peer->hasSaidHello;
        std::string frames;
        for (int i = 0; i <= count; ++i)
            frames += kits::NumberFrame(kind, static_cast<uint64>(i));
        Send(peer, frames);
    }

    void SendRaw(Peer* peer, Script* script)
    {
        const std::string_view bytes = script->Bytes(script->Byte());
        if (peer == nullptr || peer->unsent.size() > 256 * 1024)
            return;
        peer->isRight = false;
        Send(peer, std::string(bytes));
    }

    void Send(Peer* peer, const std::string& bytes)
    {
        peer->unsent += bytes;
        Push(peer);
    }

    void Push(Peer* peer)
    {
        if (!peer->socket.IsOpen() || peer->unsent.empty())
            return;
        const ssize_t sent = send(peer->socket.Get(), peer->unsent.data(), peer->unsent.size(), MSG_NOSIGNAL);
        if (sent > 0)
            peer->unsent.erase(0, static_cast<size_t>(sent));
        else if (sent < 0 && errno != EAGAIN)
            peer->unsent.clear();
    }

    size_t Read(Peer* peer, size_t most)
    {
        if (peer == nullptr || !peer->socket.IsOpen())
            return 0;
        static char bytes[64 * 1024];
        const ssize_t size = recv(peer->socket.Get(), bytes, std::min(most, sizeof(bytes)), 0);
        if (size > 0)
            return static_cast<size_t>(size);
        // The connection was closed. Even a peer that has kept to the rules gets a reason then: it was one too many, or
        // late.
        if (size == 0)
            peer->isRight = false;
        return 0;
    }

    void PortTurn()
    {
        fIsWoken = false;
        std::vector<pollfd> polls;
        fVisitors.AppendPolls(&polls);
        poll(polls.data(), polls.size(), 0);
        fVisitors.Handle(polls.data());
    }

    void MainTurn()
    {
        fVisitors.MainWaits();
        kits::WakeSet::Number space[16];
        for (const kits::WakeSet::Number number : kits::WakeSet::Clear(space))
            fVisitors.Read(number);
        fVisitors.MainWorks();
    }

    static void Dispatch(int count)
    {
        kits::PostOffice& office = kits::PostOffice::Get();
        while (count-- > 0 && office.HasMessages())
            office.DispatchNext(office.BeginTurn());
    }

    void AnswerPings()
    {
        if (std::exchange(fIsPingWaiting, false))
            fVisitors.AnswerPings();
    }

    void Check()
    {
        static const kits::PeerAccounts::Table kTable = Table();
        for (const Resource resource : kResources) {
            const kits::PeerAccounts::Row& row = kTable[static_cast<size_t>(resource)];
            Expect(fAccounts.UsedByAll(resource) <= row.inAll);
            Expect(fAccounts.Used(kits::ThisTeam(), resource) <= row.ofAProcess);
        }
    }

    kits::Visitors::Clock::time_point fNow{1000h};
    kits::PeerAccounts fAccounts;
    kits::Visitors fVisitors;
    sockaddr_un fAddress{};
    socklen_t fAddressSize = 0;
    std::vector<std::unique_ptr<Peer>> fPeers;
    int32 fLastNumber = 0;
    bool fIsPingWaiting = false;
    bool fIsWoken = false;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    kits::InterfaceLock::Get().Lock();
    auto* looper = new BLooper("fuzz");
    sHandlers = new std::array<Counter, kCountHandlers>;
    for (Counter& handler : *sHandlers)
        looper->AddHandler(&handler);
    looper->Run();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunScript<Run>(data, size, 1024);
}
