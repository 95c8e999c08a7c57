// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamLinks.h"
#include "kits/application/teams/TeamSocket.h"
#include "kits/kernel/Errors.h"
#include "tests/fuzz/ScriptRun.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

// The connection to a team that reads, answers and ends as it likes, while time passes. Accepted messages arrive, once
// and in order; a handler that is gone gets nothing; and in the end everything is given back.

namespace {

using kits::Resource;
using namespace std::chrono_literals;

constexpr kits::token_t kLastToken = 5;

kits::TeamFolder* sFolder;

/// Small limits, so that a short script reaches them.
kits::PeerAccounts::Table Table()
{
    kits::PeerAccounts::Table table{};
    table[static_cast<size_t>(Resource::kLinks)] = {1, 2, 0};
    table[static_cast<size_t>(Resource::kUnsent)] = {128 * 1024, 128 * 1024, 0};
    return table;
}

class Run {
public:
    Run()
        : fAccounts([] {}, Table())
        , fLinks(&fAccounts,
                 {[] {}, [this](kits::team_address team) { NoteClosed(team); },
                  [this](kits::team_address team, bool isHung) { NoteHung(team, isHung); }, [this] { return fNow; }})
    {
        Expect(kits::Listen(*sFolder, {"", kits::ThisTeam()}, &fListener) == B_OK);
        fLinks.SetFolder(sFolder);
    }

    ~Run()
    {
        fLinks.SetFolder(nullptr);
        Expect(fAccounts.UsedByAll(Resource::kLinks) == 0 && fAccounts.UsedByAll(Resource::kUnsent) == 0);
        Expect(fAccounts.CountProcesses() == 0);
        unlinkat(sFolder->Descriptor(), kits::TeamFolder::MakeName({"", kits::ThisTeam()}).c_str(), 0);
    }

    void Step(Script* script)
    {
        switch (script->Byte() % 14) {
        case 0:
        case 1:
        case 2:
            Send(script);
            break;
        case 3:
            Accept();
            break;
        case 4:
        case 5:
            Read(script->Size(64 * 1024) + 1);
            break;
        case 6:
            Answer(kits::NumberFrame(kits::FrameKind::kPong, script->Byte() % 4 == 0 ? fLastPing : script->Byte()));
            break;
        case 7: {
            const kits::token_t token = script->Byte() % (kLastToken + 1);
            Answer(kits::NumberFrame(kits::FrameKind::kGone, static_cast<uint64>(token)));
            fToldGone.insert(token);
            break;
        }
        case 8:
            Answer(std::string(script->Bytes(script->Byte() % 32)));
            fMayBreak = true;
            break;
        case 9:
            if (script->Byte() % 4 == 0)
                ClosePartner();
            break;
        case 10:
            fNow += 100ms * script->Byte();
            break;
        case 11:
            fIsWatched = !fIsWatched;
            fLinks.SetWatched(kits::ThisTeam(), fIsWatched);
            break;
        case 12:
            // A team that does not exist, and one that cannot exist.
            Expect(fLinks.Send(kits::ThisTeam() ^ script->Byte() ^ 0x100, OneTarget(1), 'code', Text(0, 8)) ==
                   B_BAD_HANDLER);
            fLinks.Forgive(kits::ThisTeam());
            break;
        default:
            PortTurn();
        }
        Check();
    }

    /// The partner reads everything.
    void Finish()
    {
        Accept();
        for (fHasRead = true; fHasRead && fPartner.IsOpen() && !fHasClosed;) {
            fHasRead = false;
            PortTurn();
            Read(64 * 1024);
            Check();
        }
        if (!fPartner.IsOpen() || fHasClosed || fMayBreak)
            return;
        Expect(fCountCome == fTaken.size());
        Expect(fAccounts.UsedByAll(Resource::kUnsent) == 0);
    }

private:
    static kits::MessageFrame OneTarget(kits::token_t token)
    {
        kits::MessageFrame frame;
        frame.targets.push_back(token);
        return frame;
    }

    static std::shared_ptr<const std::string> Text(uint64 number, size_t size)
    {
        std::string text(std::max(size, sizeof(number)), '.');
        std::memcpy(text.data(), &number, sizeof(number));
        return std::make_shared<const std::string>(std::move(text));
    }

    void Send(Script* script)
    {
        const kits::token_t token = script->Byte() % (kLastToken + 1);
        const uint64 number = ++fLastNumber;
        const bool isReachable = fLinks.IsReachable({kits::ThisTeam(), token});
        const status_t status =
            fLinks.Send(kits::ThisTeam(), OneTarget(token), 'code', Text(number, script->Size(64 * 1024)));
        Expect(status == B_OK || status == B_WOULD_BLOCK || status == B_BAD_HANDLER);
        Expect(isReachable || status != B_OK);
        // On this connection, nothing is sent to a handler that is known to be gone.
        Expect(!fKnownGone.contains(token) || status != B_OK || fHasClosed);
        if (status == B_OK)
            fTaken.push_back(number);
    }

    void Accept()
    {
        kits::FileDescriptor socket(accept4(fListener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        // A second connection is refused after the end of the first.
        if (socket.IsOpen() && !std::exchange(fHasAccepted, true))
            fPartner = std::move(socket);
    }

    void Read(size_t most)
    {
        const auto take = [this](kits::FrameKind kind, std::string_view content) { Take(kind, content); };
        fHasRead = ReceiveFrames(fPartner, most, &fReader, take) || fHasRead;
    }

    void Take(kits::FrameKind kind, std::string_view content)
    {
        if (!std::exchange(fHasHello, true)) {
            Expect(kind == kits::FrameKind::kHello && kits::ReadHello(content) == kits::ThisTeam());
            return;
        }
        if (kind == kits::FrameKind::kPing) {
            const std::optional<uint64> number = kits::ReadNumber(content);
            Expect(number && *number > fLastPing);
            fLastPing = *number;
            return;
        }
        std::string_view text;
        Expect(kind == kits::FrameKind::kMessage && kits::ReadMessageFrame(content, &text).has_value());
        uint64 number;
        std::memcpy(&number, text.data(), sizeof(number));
        Expect(fCountCome < fTaken.size() && fTaken[fCountCome++] == number);
    }

    void Answer(const std::string& bytes)
    {
        if (fPartner.IsOpen())
            send(fPartner.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        else
            fMayBreak = true; // nobody receives the answer
    }

    void ClosePartner()
    {
        fPartner.Close();
        fMayBreak = true;
    }

    void PortTurn()
    {
        std::vector<pollfd> polls;
        fLinks.AppendPolls(&polls);
        Expect(polls.size() <= 1);
        poll(polls.data(), polls.size(), 0);
        const bool hasRead = !polls.empty() && (polls[0].revents & POLLIN) != 0;
        fLinks.Handle(polls.data(), polls.size());
        if (hasRead && !fMayBreak)
            fKnownGone = fToldGone;
    }

    void NoteClosed(kits::team_address team)
    {
        Expect(team == kits::ThisTeam());
        // The test does not read what comes on a second connection.
        fHasClosed = true;
        fMayBreak = true;
        fKnownGone.clear();
        fPartner.Close();
    }

    void NoteHung(kits::team_address team, bool isHung)
    {
        Expect(team == kits::ThisTeam() && isHung != fIsHung);
        fIsHung = isHung;
    }

    void Check()
    {
        Expect(fAccounts.UsedByAll(Resource::kLinks) <= 1);
        Expect(fAccounts.UsedByAll(Resource::kUnsent) <= 128 * 1024);
        if (fHasClosed)
            fIsHung = false;
    }

    kits::TeamLinks::Clock::time_point fNow{1000h};
    kits::PeerAccounts fAccounts;
    kits::TeamLinks fLinks;
    kits::FileDescriptor fListener, fPartner;
    kits::FrameReader fReader;
    bool fHasAccepted = false, fHasRead = false, fHasHello = false, fHasClosed = false, fMayBreak = false,
         fIsWatched = false, fIsHung = false;
    uint64 fLastNumber = 0, fLastPing = 0;
    std::vector<uint64> fTaken; ///< accepted by Send
    size_t fCountCome = 0;      ///< those of them that the partner has received
    std::set<kits::token_t> fToldGone, fKnownGone;
};

std::string sRuntime;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    std::string name = "/dev/shm/fuzz-links-XXXXXX";
    Expect(mkdtemp(name.data()) != nullptr);
    sRuntime = name;
    setenv("XDG_RUNTIME_DIR", sRuntime.c_str(), 1);
    std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(sRuntime, ignored);
    });
    sFolder = new kits::TeamFolder;
    Expect(sFolder->Open() == B_OK);
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunScript<Run>(data, size, 512);
}
