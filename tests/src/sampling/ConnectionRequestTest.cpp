// SPDX-License-Identifier: MIT
#include "src/sampling/ConnectionRequest.h"

#include "kits/application/InterfaceLock.h"
#include "kits/application/Looper.h"
#include "kits/application/Message.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/kernel/Errors.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/MessageCodes.h"

#include <gtest/gtest.h>

namespace {

/// Returns a messenger to some handler of another process, which need not exist.
BMessenger Remote(kits::team_address team, kits::token_t token)
{
    return kits::MessageAccess::MessengerTo({team << 32 | 1, token});
}

class ConnectionRequestTest : public testing::Test {
protected:
    ConnectionRequestTest() { fLooper->Run(); }
    ~ConnectionRequestTest() override { fLooper->Quit(); }

    /// Returns the code of the answer to a request; 1 if there was none.
    static uint32 Ask(const BMessage& request)
    {
        BMessage reply(1);
        BMessenger(sLooper).SendMessage(&request, &reply);
        return reply.what;
    }
    static uint32 Ask(uint32 code, const BMessenger& messenger)
    {
        BMessage request(code);
        request.AddMessenger("Messenger", messenger);
        return Ask(request);
    }

    class Application : public BLooper {
    public:
        explicit Application(Sysinfo* sampler)
            : fSampler(sampler)
        {
        }
        void MessageReceived(BMessage* message) override { AnswerConnectionRequest(message, fSampler); }

        Sysinfo* fSampler;
    };

    const kits::InterfaceLocker fLocker;
    Sysinfo fSampler{10};
    Application* const fLooper = sLooper = new Application(&fSampler);
    static Application* sLooper;
};

ConnectionRequestTest::Application* ConnectionRequestTest::sLooper = nullptr;

} // namespace

TEST_F(ConnectionRequestTest, RegistersAndUnregisters)
{
    fSampler.SetSamplingDelay(3600LL * 1000000);
    EXPECT_EQ(Ask(MSG_CONNECT, BMessenger(fLooper)), 0u);
    EXPECT_EQ(fSampler.CountMessengers(), 1);
    EXPECT_EQ(Ask(MSG_CONNECT, BMessenger(fLooper)), 0u);
    EXPECT_EQ(fSampler.CountMessengers(), 1);
    EXPECT_EQ(Ask(MSG_DISCONNECT, BMessenger(fLooper)), 0u);
    EXPECT_EQ(fSampler.CountMessengers(), 0);
    EXPECT_EQ(Ask(MSG_DISCONNECT, BMessenger(fLooper)), 0u);
}

TEST_F(ConnectionRequestTest, RefusesWhatHasNoMessenger)
{
    for (uint32 code : {MSG_CONNECT, MSG_DISCONNECT}) {
        BMessage request(code);
        EXPECT_EQ(Ask(request), 0xffffffffu);
        request.AddString("Messenger", "of another type");
        EXPECT_EQ(Ask(request), 0xffffffffu);
        request.RemoveName("Messenger");
        request.AddMessage("Messenger", &request);
        EXPECT_EQ(Ask(request), 0xffffffffu);
    }
    EXPECT_EQ(fSampler.CountMessengers(), 0);
}

TEST_F(ConnectionRequestTest, WithoutASamplerNobodyIsConnected)
{
    fLooper->fSampler = nullptr;
    EXPECT_EQ(Ask(MSG_CONNECT, BMessenger(fLooper)), 0xffffffffu);
    EXPECT_EQ(Ask(MSG_DISCONNECT, BMessenger(fLooper)), 0u);
}

TEST_F(ConnectionRequestTest, TakesSoManyOfOneProcessAndStillOthers)
{
    // No round comes between, which would discover that none of them exists.
    const Sysinfo::Autolock lock(&fSampler);
    for (kits::token_t token = 1; token <= Sysinfo::kMostReceiversOfATeam; token++)
        ASSERT_EQ(Ask(MSG_CONNECT, Remote(4711, token)), 0u);
    EXPECT_EQ(Ask(MSG_CONNECT, Remote(4711, 5000)), 0xffffffffu);
    EXPECT_EQ(Ask(MSG_CONNECT, Remote(4711, 1)), 0u);
    EXPECT_EQ(Ask(MSG_CONNECT, Remote(4712, 1)), 0u);
    EXPECT_EQ(Ask(MSG_CONNECT, BMessenger(fLooper)), 0u);
    EXPECT_EQ(fSampler.CountMessengers(), Sysinfo::kMostReceiversOfATeam + 2);
    EXPECT_EQ(Ask(MSG_DISCONNECT, Remote(4711, 7)), 0u);
    EXPECT_EQ(Ask(MSG_CONNECT, Remote(4711, 5000)), 0u);
}

TEST_F(ConnectionRequestTest, TakesSoManyInAll)
{
    const Sysinfo::Autolock lock(&fSampler);
    for (size_t i = 0; i < Sysinfo::kMostReceivers; i++)
        fSampler.AddMessenger(Remote(5000 + i, 1));
    EXPECT_EQ(fSampler.CountMessengers(), static_cast<int32>(Sysinfo::kMostReceivers));
    EXPECT_EQ(Ask(MSG_CONNECT, Remote(4711, 1)), 0xffffffffu);
    // The charts of the application's own window are never refused for that.
    EXPECT_EQ(Ask(MSG_CONNECT, BMessenger(fLooper)), 0u);
}
