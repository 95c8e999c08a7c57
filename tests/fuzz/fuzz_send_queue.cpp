// SPDX-License-Identifier: MIT
#include "kits/application/teams/SendQueue.h"
#include "kits/kernel/Errors.h"
#include "kits/kernel/FileDescriptor.h"
#include "tests/fuzz/ScriptRun.h"

#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

// The queue for a team that reads when and as much as it likes, and may end. No accepted message is lost, doubled or
// out of order, unless a newer one replaces it, and the memory in use equals the claimed memory.

namespace {

constexpr kits::team_address kTeam = 7ULL << 32;
constexpr size_t kMost = 96 * 1024;

kits::PeerAccounts::Table Table()
{
    kits::PeerAccounts::Table table{};
    table[static_cast<size_t>(kits::Resource::kUnsent)] = {kMost, kMost, 0};
    return table;
}

class Run {
public:
    Run()
        : fAccounts([] {}, Table())
        , fQueue(kits::PeerClaim(&fAccounts, kTeam, kits::Resource::kUnsent))
    {
        int ends[2];
        Expect(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) == 0);
        fOurs = kits::FileDescriptor(ends[0]);
        fTheirs = kits::FileDescriptor(ends[1]);
        const int size = 4096;
        setsockopt(fOurs.Get(), SOL_SOCKET, SO_SNDBUF, &size, sizeof(size));
    }

    void Add(Script* script)
    {
        const uint8_t flags = script->Byte();
        kits::MessageFrame frame;
        frame.newestWins = (flags & 1) != 0;
        frame.sourceWaits = (flags & 2) != 0;
        for (int token = 1; token <= 4; ++token)
            if ((flags & (8 << token)) != 0)
                frame.targets.push_back(token);
        if (frame.targets.empty())
            frame.targets.push_back(9);
        const uint32 code = flags >> 2 & 1;
        // The number and the code stand in front.
        std::string text(16 + script->Size(32 * 1024), '.');
        const uint64 number = ++fLastNumber;
        std::memcpy(text.data(), &number, 8);
        std::memcpy(text.data() + 8, &code, 4);
        const bool isStream = frame.newestWins && !frame.sourceWaits;
        const std::vector<kits::token_t> targets = frame.targets;
        const status_t status =
            fQueue.AddMessage(std::move(frame), code, std::make_shared<const std::string>(std::move(text)));
        Expect(status == B_OK || status == B_WOULD_BLOCK);
        if (status == B_WOULD_BLOCK) {
            // The sender knows; the message that it would have replaced may be gone as well.
            for (const kits::token_t target : targets)
                if (isStream)
                    fNewest.erase({code, target});
            return;
        }
        if (!isStream)
            fPlain.push_back(number);
        for (const kits::token_t target : targets)
            if (isStream)
                fNewest[{code, target}] = number;
    }

    void AddControl()
    {
        const uint64 number = ++fLastNumber;
        const status_t status = fQueue.AddControl(kits::NumberFrame(kits::FrameKind::kPing, number));
        Expect(status == B_OK || status == B_WOULD_BLOCK);
        if (status == B_OK)
            fPlain.push_back(number);
    }

    void Flush()
    {
        const bool isSound = fQueue.Flush(fOurs.Get());
        Expect(isSound || !fTheirs.IsOpen());
    }

    void Read(size_t most)
    {
        const auto take = [this](kits::FrameKind kind, std::string_view content) { Take(kind, content); };
        fHasRead = ReceiveFrames(fTheirs, most, &fReader, take) || fHasRead;
    }

    void End() { fTheirs.Close(); }

    void Check() const
    {
        const size_t used = fAccounts.Used(kTeam, kits::Resource::kUnsent);
        Expect(used <= kMost && used == fAccounts.UsedByAll(kits::Resource::kUnsent));
        Expect(used <= fQueue.Capacity() && (fQueue.CountFrames() == 0) == fQueue.IsEmpty());
        Expect(!fQueue.IsEmpty() || (used == 0 && fQueue.Capacity() == 0));
    }

    /// The other side reads everything.
    void Finish()
    {
        while (fTheirs.IsOpen() && !fQueue.IsEmpty()) {
            fHasRead = false;
            Flush();
            Read(64 * 1024);
            Expect(fHasRead); // it never stops while somebody reads
        }
        if (!fTheirs.IsOpen())
            return;
        do {
            fHasRead = false;
            Read(64 * 1024);
        } while (fHasRead);
        Expect(fCountPlain == fPlain.size());
        for (const auto& [stream, number] : fNewest)
            Expect(fLastOfStream[stream] == number);
    }

private:
    void Take(kits::FrameKind kind, std::string_view content)
    {
        if (kind == kits::FrameKind::kPing) {
            TakePlain(kits::ReadNumber(content).value());
            return;
        }
        std::string_view text;
        const std::optional<kits::MessageFrame> frame = kits::ReadMessageFrame(content, &text);
        Expect(frame.has_value() && text.size() >= 16);
        uint64 number;
        uint32 code;
        std::memcpy(&number, text.data(), 8);
        std::memcpy(&code, text.data() + 8, 4);
        if (!frame->newestWins || frame->sourceWaits) {
            TakePlain(number);
            return;
        }
        for (const kits::token_t target : frame->targets) {
            uint64& last = fLastOfStream[{code, target}];
            Expect(last < number); // newer each time
            last = number;
        }
    }

    void TakePlain(uint64 number) { Expect(fCountPlain < fPlain.size() && fPlain[fCountPlain++] == number); }

    kits::PeerAccounts fAccounts;
    kits::SendQueue fQueue;
    kits::FileDescriptor fOurs, fTheirs;
    kits::FrameReader fReader;
    uint64 fLastNumber = 0;
    std::vector<uint64> fPlain; ///< accepted and not replaceable, in order
    size_t fCountPlain = 0;     ///< those that have arrived
    using Stream = std::pair<uint32, kits::token_t>;
    std::map<Stream, uint64> fNewest, fLastOfStream;
    bool fHasRead = false;
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 512)
        return 0;
    Script script(TextOf(data, size));
    {
        Run run;
        while (!script.IsOver()) {
            switch (script.Byte() % 8) {
            case 0:
            case 1:
            case 2:
                run.Add(&script);
                break;
            case 3:
                run.AddControl();
                break;
            case 4:
            case 5:
                run.Flush();
                break;
            case 6:
                run.Read(script.Size(64 * 1024) + 1);
                break;
            default:
                if (script.Byte() == 0xFF)
                    run.End();
            }
            run.Check();
        }
        run.Finish();
        run.Check();
    }
    return 0;
}
