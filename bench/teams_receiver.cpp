// SPDX-License-Identifier: MIT
// The other process of bench_teams: as many handlers as it is asked for, and an echo.
//
// It sends back whatever arrives on descriptor 3. When the last of its handlers has got a message, it writes the moment
// to descriptor 4, as eight bytes.

#include "bench/teams_partner.h"
#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"

#include <unistd.h>

#include <memory>
#include <thread>
#include <vector>

namespace {

class Receiver : public BApplication {
public:
    Receiver()
        : BApplication(kReceiverSignature, nullptr, kits::Presence::kListed)
    {
    }

    void MessageReceived(BMessage* message) override
    {
        int32 count = 0;
        if (message->what != kMakeHandlers || message->FindInt32("count", &count) != B_OK)
            return;
        fHandlers.clear();
        BMessage reply(kMakeHandlers);
        for (int32 i = 0; i < count; i++) {
            fHandlers.push_back(std::make_unique<Handler>(i + 1 == count));
            AddHandler(fHandlers.back().get());
            reply.AddMessenger("messenger", BMessenger(fHandlers.back().get()));
        }
        message->SendReply(&reply);
    }

private:
    class Handler : public BHandler {
    public:
        explicit Handler(bool isLast)
            : fIsLast(isLast)
        {
        }
        void MessageReceived(BMessage*) override
        {
            const int64 now = MonotonicNanoseconds();
            if (fIsLast && write(kMomentsDescriptor, &now, sizeof(now)) != sizeof(now))
                _exit(1);
        }

    private:
        const bool fIsLast;
    };

    std::vector<std::unique_ptr<Handler>> fHandlers;
};

void Echo()
{
    std::vector<char> buffer(64 * 1024);
    ssize_t size;
    while ((size = read(kEchoDescriptor, buffer.data(), buffer.size())) > 0)
        if (write(kEchoDescriptor, buffer.data(), static_cast<size_t>(size)) != size)
            break;
    // The measuring process has gone.
    _exit(0);
}

} // namespace

int main()
{
    std::thread(Echo).detach();
    Receiver receiver;
    return receiver.Run() < 0 ? 1 : 0;
}
