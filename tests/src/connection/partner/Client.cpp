// SPDX-License-Identifier: MIT
// A host of charts outside the application, without pictures. For the tests of their connections.
//
//   sampling_client SIGNATURE COUNT      the number of charts
//
// Answers 'info' with the number of samples received ("samples"), the smallest number for one chart ("fewest"), the
// number of connected charts ("connected"), and the figures of PartnerTricks.h. After 'flap' breaks all connections off
// "count" times, and reconnects all the time meanwhile.

#include "kits/application/Application.h"
#include "kits/application/Timer.h"
#include "tests/src/connection/SampleTaker.h"
#include "tests/src/connection/partner/PartnerTricks.h"
#include "tests/support/BoundProcess.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

class Client : public BApplication {
public:
    Client(const char* signature, int count)
        : BApplication(signature, nullptr, kits::Presence::kListed)
        , fCount(count)
    {
    }

    void ReadyToRun() override
    {
        for (int i = 0; i < fCount; i++) {
            fTakers.push_back(std::make_unique<test::SampleTaker>(this, 20000));
            fTakers.back()->Connect();
        }
    }

    bool QuitRequested() override
    {
        fReconnecting.Stop();
        fTakers.clear();
        return true;
    }

    void MessageReceived(BMessage* message) override
    {
        switch (message->what) {
        case 'info': {
            int32 sum = 0, connected = 0, fewest = INT32_MAX;
            for (const auto& taker : fTakers) {
                sum += taker->countSamples;
                fewest = std::min<int32>(fewest, taker->countSamples);
                connected += taker->IsConnected() ? 1 : 0;
            }
            BMessage reply('repl');
            reply.AddInt32("samples", sum);
            reply.AddInt32("fewest", fewest);
            reply.AddInt32("connected", connected);
            reply.AddInt32("flaps", fFlapping.CountLeft());
            reply.AddInt32("files", test::CountOpenFiles());
            reply.AddInt32("memory", test::ResidentMemory());
            message->SendReply(&reply);
            break;
        }
        case 'flap': {
            int32 count = 0;
            message->FindInt32("count", &count);
            fFlapping.Start(Signature(), count);
            fReconnecting.Start(3000);
            break;
        }
        default:
            BApplication::MessageReceived(message);
        }
    }

private:
    // A process that closes its own port gets no more messages, and has to ask again itself.
    void Reconnect()
    {
        for (const auto& taker : fTakers)
            taker->Connect();
        if (fFlapping.CountLeft() == 0)
            fReconnecting.Stop();
    }

    const int fCount;
    std::vector<std::unique_ptr<test::SampleTaker>> fTakers;
    test::Flapping fFlapping;
    kits::Timer fReconnecting{[this] { Reconnect(); }};
};

} // namespace

int main(int argc, char** argv)
{
    test::EndWithTest();
    Client client(argc > 1 ? argv[1] : "application/x-vnd.test-sampling_client", argc > 2 ? atoi(argv[2]) : 1);
    return client.Run() < 0 ? 1 : 0;
}
