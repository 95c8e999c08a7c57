// SPDX-License-Identifier: MIT
// The application without its windows: a sampler with which others can register. For the tests of their connections.
//
//   sampling_server SIGNATURE [DELAY]      microseconds between two samples
//
// It ends with its test. The test may not know of it, if the process that began to start it ended before the server
// could be found.
//
// Also answers 'info' with the number of registered receivers ("receivers"), how often it learned that none is left
// ("alone"), how it was launched ("launched", "early"), how often the about window was requested ("abouts"), and the
// newest sample. After 'deny' it refuses connections.

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "src/sampling/ConnectionRequest.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"
#include "tests/src/connection/partner/PartnerTricks.h"
#include "tests/support/BoundProcess.h"

#include <cstdlib>
#include <memory>

namespace {

class Server : public BApplication {
public:
    Server(const char* signature, bigtime_t delay)
        : BApplication(signature, nullptr, kits::Presence::kSingle)
        , fDelay(delay)
    {
    }

    void ReadyToRun() override
    {
        fSampler = std::make_unique<Sysinfo>(10);
        fSampler->SetSamplingDelay(fDelay);
    }

    void AboutRequested() override { ++fCountAbouts; }

    bool QuitRequested() override
    {
        fSampler.reset();
        return true;
    }

    void MessageReceived(BMessage* message) override
    {
        switch (message->what) {
        case MSG_CONNECT:
        case MSG_DISCONNECT:
            AnswerConnectionRequest(message, fDenies ? nullptr : fSampler.get());
            break;
        case MSG_LAUNCHED_BY_REPLICANT:
            ++fCountLaunchMessages;
            fLaunchedEarly = fLaunchedEarly || fSampler == nullptr;
            break;
        case MSG_NO_LISTENERS:
            ++fCountAlone;
            break;
        case 'flap': {
            int32 count = 0;
            message->FindInt32("count", &count);
            fFlapping.Start(Signature(), count);
            break;
        }
        case 'deny':
            fDenies = true;
            break;
        case 'info': {
            BMessage reply('repl');
            reply.AddInt32("receivers", fSampler->CountMessengers());
            reply.AddInt32("alone", fCountAlone);
            reply.AddInt32("launched", fCountLaunchMessages);
            reply.AddBool("early", fLaunchedEarly);
            reply.AddInt32("abouts", fCountAbouts);
            reply.AddInt32("flaps", fFlapping.CountLeft());
            reply.AddInt32("files", test::CountOpenFiles());
            reply.AddInt32("memory", test::ResidentMemory());
            {
                const Sysinfo::Autolock lock(fSampler.get());
                fSampler->GhostArchive(&reply);
            }
            message->SendReply(&reply);
            break;
        }
        default:
            BApplication::MessageReceived(message);
        }
    }

private:
    const bigtime_t fDelay;
    std::unique_ptr<Sysinfo> fSampler;
    int32 fCountAlone = 0;
    int32 fCountLaunchMessages = 0;
    int32 fCountAbouts = 0;
    bool fLaunchedEarly = false;
    bool fDenies = false;
    test::Flapping fFlapping;
};

} // namespace

int main(int argc, char** argv)
{
    test::EndWithTest();
    Server server(argc > 1 ? argv[1] : "application/x-vnd.test-sampling_server", argc > 2 ? atoll(argv[2]) : 10000);
    if (server.InitCheck() == B_ALREADY_RUNNING)
        return 0;
    return server.Run() < 0 ? 1 : 0;
}
