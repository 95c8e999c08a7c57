// SPDX-License-Identifier: MIT
// An application for the tests about teams: does what its messages say.
//
//   kits_partner [SIGNATURE [hidden|listed|single|starting]]
//
// In the mode "starting" it is listed and does not run: it waits for a signal.

#include "kits/application/Application.h"
#include "kits/application/Message.h"
#include "kits/application/Messenger.h"
#include "kits/kernel/Errors.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/BoundProcess.h"

#include <unistd.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

namespace {

class Partner : public BApplication {
public:
    Partner(const char* mimeType, kits::Presence presence)
        : BApplication(mimeType, nullptr, presence)
    {
    }

    void ReadyToRun() override { fLog += "ready "; }

    bool QuitRequested() override
    {
        Hang(fLongEnd);
        return BApplication::QuitRequested();
    }

    void MessageReceived(BMessage* message) override
    {
        switch (message->what) {
        case 'echo': {
            BMessage reply(*message);
            reply.what = 'repl';
            message->SendReply(&reply);
            break;
        }
        case 'log?': {
            BMessage reply('repl');
            reply.AddString("log", fLog);
            reply.AddInt32("ticks", fCountTicks);
            reply.AddInt32("number", fNumber);
            message->SendReply(&reply);
            break;
        }
        case 'tick':
            ++fCountTicks;
            message->FindInt32("number", &fNumber);
            break;
        case 'hang': {
            int64 time = 0;
            message->FindInt64("time", &time);
            Hang(time);
            break;
        }
        case 'nap!': {
            // The answer tells the sender that it has begun.
            int64 time = 0;
            message->FindInt64("time", &time);
            message->SendReply('repl');
            Hang(time);
            break;
        }
        case 'slow':
            message->FindInt64("time", &fLongEnd);
            message->SendReply('repl');
            break;
        case 'keep':
            message->FindMessenger("messenger", &fMessenger);
            message->SendReply('repl');
            break;
        case 'send': {
            int32 count = 0;
            message->FindInt32("count", &count);
            for (int32 i = 0; i < count; ++i) {
                BMessage tick('tick');
                tick.AddInt32("number", i);
                fMessenger.SendMessage(&tick, this);
            }
            break;
        }
        case 'vald': {
            BMessage reply('repl');
            reply.AddBool("valid", fMessenger.IsValid());
            message->SendReply(&reply);
            break;
        }
        case 'hndl': {
            // A handler of its own, which is gone after the first message.
            fHandler = std::make_unique<OneShot>(this);
            AddHandler(fHandler.get());
            BMessage reply('repl');
            reply.AddMessenger("messenger", BMessenger(fHandler.get()));
            message->SendReply(&reply);
            break;
        }
        case 'many': {
            int32 count = 0;
            message->FindInt32("count", &count);
            BMessage reply('repl');
            while (static_cast<int32>(fTickers.size()) < count) {
                fTickers.push_back(std::make_unique<Ticker>(this));
                AddHandler(fTickers.back().get());
                reply.AddMessenger("messenger", BMessenger(fTickers.back().get()));
            }
            message->SendReply(&reply);
            break;
        }
        case 'exit':
            _exit(3);
        case B_SILENT_RELAUNCH:
            fLog += "again ";
            break;
        case 'lnch':
            fLog += "launched ";
            break;
        default:
            break;
        }
    }

private:
    class OneShot : public BHandler {
    public:
        explicit OneShot(Partner* owner)
            : fOwner(owner)
        {
        }
        void MessageReceived(BMessage*) override { fOwner->fHandler = nullptr; }

    private:
        Partner* const fOwner;
    };

    class Ticker : public BHandler {
    public:
        explicit Ticker(Partner* owner)
            : fOwner(owner)
        {
        }
        void MessageReceived(BMessage* message) override
        {
            ++fOwner->fCountTicks;
            message->FindInt32("number", &fOwner->fNumber);
        }

    private:
        Partner* const fOwner;
    };

    static void Hang(bigtime_t time) { std::this_thread::sleep_for(std::chrono::microseconds(time)); }

    std::string fLog;
    bigtime_t fLongEnd = 0; ///< the time that quitting takes
    int32 fCountTicks = 0;
    int32 fNumber = -1;
    BMessenger fMessenger;
    std::unique_ptr<OneShot> fHandler;
    std::vector<std::unique_ptr<Ticker>> fTickers;
};

} // namespace

int main(int argc, char** argv)
{
    test::EndWithTest();
    const std::string mode = argc > 2 ? argv[2] : "single";
    Partner partner(argc > 1 ? argv[1] : "application/x-vnd.test-kits_partner",
                    mode == "hidden"   ? kits::Presence::kHidden
                    : mode == "single" ? kits::Presence::kSingle
                                       : kits::Presence::kListed);
    while (mode == "starting")
        pause();
    if (partner.InitCheck() == B_ALREADY_RUNNING)
        return partner.OtherDisplay().empty() ? 0 : 4;
    return partner.Run() < 0 ? 1 : 0;
}
