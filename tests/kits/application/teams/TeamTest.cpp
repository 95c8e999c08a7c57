// SPDX-License-Identifier: MIT
// Two processes that talk to each other.

#include "kits/application/Application.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/Roster.h"
#include "kits/application/messages/MessageFormat.h"
#include "kits/application/messages/MessagePrivate.h"
#include "kits/application/teams/Frame.h"
#include "kits/application/teams/TeamPort.h"
#include "kits/kernel/Errors.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/ReplaceValue.h"
#include "tests/support/TeamFixture.h"

#include <unistd.h>

#include <csignal>
#include <filesystem>

using test::KitThread;
using test::Partner;
using test::Recorder;
using test::TeamTest;

namespace {

BMessage Tick(int32 number, bool newestWins = false)
{
    BMessage message('tick');
    message.AddInt32("number", number);
    message.SetNewestWins(newestWins);
    return message;
}

BMessage WithCount(uint32 code, int32 count)
{
    BMessage message(code);
    message.AddInt32("count", count);
    return message;
}

} // namespace

TEST_F(TeamTest, FindsAnApplicationByItsSignature)
{
    EXPECT_EQ(be_roster->TeamFor(test::kPartnerSignature), B_NAME_NOT_FOUND);
    EXPECT_FALSE(be_roster->IsRunning(test::kPartnerSignature));
    status_t status = B_OK;
    EXPECT_FALSE(BMessenger(test::kPartnerSignature, -1, &status).IsValid());
    EXPECT_EQ(status, B_NAME_NOT_FOUND);
    const Partner partner;
    const BMessenger application = partner.Application();
    EXPECT_EQ(application.Team(), partner.Process());
    EXPECT_FALSE(application.IsTargetLocal());
    EXPECT_EQ(application.Target(nullptr), nullptr);
    EXPECT_FALSE(application.LockTarget());
    EXPECT_EQ(be_roster->TeamFor(test::kPartnerSignature), partner.Process());
    EXPECT_EQ(be_roster->TeamFor("application/x-vnd.test-other"), B_NAME_NOT_FOUND);
    EXPECT_EQ(be_roster->TeamFor(nullptr), B_NAME_NOT_FOUND);
    EXPECT_EQ(BMessenger(test::kPartnerSignature), application);
    EXPECT_FALSE(BMessenger(test::kPartnerSignature, getpid()).IsValid());

    app_info info;
    EXPECT_EQ(be_roster->GetRunningAppInfo(partner.Process(), &info), B_OK);
    EXPECT_EQ(info.team, partner.Process());
    EXPECT_EQ(info.signature, test::kPartnerSignature);
    EXPECT_EQ(info.ref.name, "kits_partner");
    EXPECT_EQ(be_roster->GetRunningAppInfo(1, &info), B_BAD_VALUE);
}

TEST_F(TeamTest, IsFoundOnlyIfItWantsTo)
{
    const Partner hidden(test::kPartnerSignature, "hidden");
    const Partner first, second;
    first.Application();
    EXPECT_TRUE(second.Application().IsValid());
    // The one that was started first; both can be named.
    EXPECT_EQ(be_roster->TeamFor(test::kPartnerSignature), first.Process());
    EXPECT_FALSE(BMessenger(test::kPartnerSignature, hidden.Process()).IsValid());
}

TEST_F(TeamTest, CarriesEverythingButPointers)
{
    const Partner partner;
    BMessage message('echo');
    message.AddBool("bool", true);
    message.AddInt64("int64", INT64_MIN);
    message.AddFloat("float", 1.1f);
    message.AddRect("rect", BRect(1, 2, 3, 4));
    message.AddString("string", "Töne");
    message.AddData("raw", B_RAW_TYPE, std::string(574, '\x7F').data(), 574);
    message.AddMessenger("messenger", BMessenger(fLooper));
    BMessage inner('innr');
    inner.AddInt32("number", 7);
    message.AddMessage("message", &inner);
    BMessage sent(message);
    sent.AddPointer("pointer", this);
    BMessage reply = Ask(partner.Application(), sent);
    EXPECT_EQ(reply.what, uint32('repl'));
    reply.what = 'echo';
    EXPECT_TRUE(reply.HasSameData(message));
    EXPECT_TRUE(reply.WasDelivered());
}

TEST_F(TeamTest, CarriesAMessageAsLongAsMayBe)
{
    const Partner partner;
    BMessage message('echo');
    message.AddString("text", "");
    std::string flat;
    ASSERT_EQ(kits::WriteMessage(message, &flat, false), B_OK);
    // Kind, flags, reply address, number of handlers and one handler; a long text takes four bytes for its size.
    const size_t most = kits::bounds::kMostFrame - (1 + 1 + 16 + 4 + 8) - flat.size() - 4;
    test::ReplaceString(message, "text", std::string(most, 'x'));
    BMessage reply = Ask(partner.Application(), message);
    reply.what = 'echo';
    EXPECT_TRUE(reply.HasSameData(message));
    test::ReplaceString(message, "text", std::string(most + 1, 'x'));
    EXPECT_EQ(partner.Application().SendMessage(&message), B_BAD_VALUE);
    // Nothing of it was sent: the connection is intact.
    EXPECT_EQ(Ask(partner.Application(), 'echo').what, uint32('repl'));
}

TEST_F(TeamTest, AnswersAThreadAndAHandler)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    std::atomic<bool> isDone = false;
    BMessage reply;
    KitThread thread([&] {
        EXPECT_EQ(test::AwaitReply(application, 'echo', &reply), B_OK);
        isDone = true;
    });
    // Without the main loop.
    EXPECT_TRUE(test::Await([&isDone] { return isDone.load(); }));
    EXPECT_EQ(reply.what, uint32('repl'));
    EXPECT_EQ(application.SendMessage('echo', fLooper), B_OK);
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->codes.size() == 1; }));
    EXPECT_EQ(fLooper->codes[0], uint32('repl'));
}

TEST_F(TeamTest, ReachesNobodyWhileItsPortIsShut)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    std::atomic<status_t> status = B_OK;
    std::atomic<bool> isAsking = false;
    KitThread thread([&] {
        BMessage hang('hang'), reply;
        hang.AddInt64("time", 1000000000);
        isAsking = true;
        status = application.SendMessage(&hang, &reply);
    });
    EXPECT_TRUE(test::Await([&isAsking] { return isAsking.load(); }));
    EXPECT_TRUE(test::AwaitState(thread.Id(), B_THREAD_RECEIVING));
    {
        const kits::TeamPort::Shutter shutter;
        thread.Join();
        EXPECT_EQ(status, B_BAD_HANDLER);
        EXPECT_FALSE(application.IsValid());
        EXPECT_EQ(application.SendMessage('echo'), B_NO_INIT);
        EXPECT_EQ(be_roster->TeamFor(test::kPartnerSignature), B_NAME_NOT_FOUND);
        EXPECT_EQ(kits::TeamPort::Get().Open(), B_NO_INIT);
        kits::TeamPort::Get().Close();
        EXPECT_EQ(kits::TeamPort::Get().Open(), B_NO_INIT);
    }
    EXPECT_EQ(kits::TeamPort::Get().Open(), B_OK);
    const Partner second("application/x-vnd.test-second");
    EXPECT_EQ(Ask(second.Application(), 'echo').what, uint32('repl'));
}

TEST_F(TeamTest, IsToldThatThereIsNoAnswer)
{
    Partner partner;
    const BMessenger application = partner.Application();
    EXPECT_EQ(Ask(application, 'none').what, uint32(B_NO_REPLY));
    BMessage hang('hang'), reply('keep');
    hang.AddInt64("time", 200000);
    EXPECT_EQ(application.SendMessage(&hang, &reply, 0, 1000), B_TIMED_OUT);
    EXPECT_EQ(application.SendMessage(&hang, &reply, 0, 0), B_WOULD_BLOCK);
    EXPECT_EQ(test::AwaitReply(application, 'exit', &reply), B_BAD_HANDLER);
    EXPECT_EQ(reply.what, uint32('keep'));
    EXPECT_EQ(partner.Await(), 3);
    EXPECT_TRUE(test::RunUntil([&application] { return !application.IsValid(); }));
    EXPECT_EQ(application.SendMessage('echo'), B_BAD_HANDLER);
    EXPECT_EQ(test::AwaitReply(application, 'echo', &reply), B_BAD_HANDLER);
}

TEST_F(TeamTest, IsReachedByAMessengerThatItHasSent)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    std::vector<int32> numbers;
    auto handler = std::make_unique<Recorder>([&numbers](BMessage* message) {
        int32 number = -1;
        message->FindInt32("number", &number);
        numbers.push_back(number);
        EXPECT_TRUE(message->ReturnAddress().IsValid());
    });
    fLooper->AddHandler(handler.get());
    BMessage keep('keep');
    keep.AddMessenger("messenger", BMessenger(handler.get()));
    EXPECT_EQ(Ask(application, keep).what, uint32('repl'));
    bool isValid = false;
    EXPECT_EQ(Ask(application, 'vald').FindBool("valid", &isValid), B_OK);
    EXPECT_TRUE(isValid);
    const BMessage send = WithCount('send', 500);
    EXPECT_EQ(application.SendMessage(&send), B_OK);
    EXPECT_TRUE(test::RunUntil([&numbers] { return numbers.size() == 500; }));
    for (int32 i = 0; i < 500; ++i)
        EXPECT_EQ(numbers[static_cast<size_t>(i)], i);
    // The partner learns from the first message that the handler is gone.
    handler = nullptr;
    const BMessage one = WithCount('send', 1);
    EXPECT_EQ(application.SendMessage(&one), B_OK);
    EXPECT_TRUE(test::Await([&] { return Ask(application, 'vald').FindBool("valid", &isValid) == B_OK && !isValid; }));
}

TEST_F(TeamTest, LearnsThatAHandlerIsGone)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    BMessenger handler;
    ASSERT_EQ(Ask(application, 'hndl').FindMessenger("messenger", &handler), B_OK);
    EXPECT_TRUE(handler.IsValid());
    EXPECT_FALSE(handler == application);
    EXPECT_EQ(handler.SendMessage(1), B_OK);
    BMessage reply;
    EXPECT_EQ(test::AwaitReply(handler, 2, &reply), B_OK);
    EXPECT_EQ(reply.what, uint32(B_NO_REPLY));
    // From now on a message finds nobody.
    EXPECT_TRUE(test::Await([&handler] { return handler.SendMessage(3) == B_BAD_HANDLER; }));
    EXPECT_FALSE(handler.IsValid());
    EXPECT_TRUE(application.IsValid());
}

TEST_F(TeamTest, SendsOneMessageToManyHandlers)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    const BMessage many = WithCount('many', 1500);
    const BMessage reply = Ask(application, many);
    std::vector<BMessenger> targets = {BMessenger(fLooper), BMessenger(), BMessenger(fLooper)};
    BMessenger target;
    for (int32 i = 0; reply.FindMessenger("messenger", &target, i) == B_OK; ++i)
        targets.push_back(target);
    ASSERT_EQ(targets.size(), 1503u);
    const BMessage tick = Tick(5);
    BMessenger::SendToAll(targets, &tick);
    BMessenger::SendToAll(targets, nullptr);
    EXPECT_TRUE(test::RunUntil([&] { return AskNumber(application, "ticks") == 1500; }));
    EXPECT_EQ(AskNumber(application, "number"), 5);
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->codes.size() == 2; }));
    // A message that is too long to be shared goes to each handler by itself.
    BMessage big = Tick(6);
    big.AddString("text", std::string(100000, 'x'));
    targets.resize(3 + 20);
    BMessenger::SendToAll(targets, &big);
    EXPECT_TRUE(test::RunUntil([&] { return AskNumber(application, "ticks") == 1520; }));
}

TEST(Team, SpeaksToItselfBySignature)
{
    const test::RuntimeFolder runtime;
    const BApplication app("application/x-vnd.test-self", nullptr, kits::Presence::kListed);
    EXPECT_EQ(app.InitCheck(), B_OK);
    const BMessenger self("application/x-vnd.test-self");
    EXPECT_TRUE(self.IsValid());
    EXPECT_TRUE(self.IsTargetLocal());
    EXPECT_EQ(self, be_app_messenger);
    EXPECT_EQ(be_roster->TeamFor("application/x-vnd.test-self"), getpid());
}

TEST_F(TeamTest, HearsOfTeamsThatComeAndGo)
{
    struct Event {
        uint32 code;
        int32 team;
        bool operator==(const Event&) const = default;
    };
    std::vector<Event> events;
    Recorder watcher([&events](BMessage* message) {
        int32 team = -1;
        EXPECT_EQ(message->FindInt32("team", &team), B_OK);
        const char* signature = "";
        EXPECT_EQ(message->FindString("signature", &signature), B_OK);
        EXPECT_STREQ(signature, test::kPartnerSignature);
        events.push_back({message->what, team});
    });
    fLooper->AddHandler(&watcher);
    const auto await = [&events](std::vector<Event> expected) {
        EXPECT_TRUE(test::RunUntil([&] { return events.size() >= expected.size(); }));
        EXPECT_EQ(events, expected);
        events.clear();
    };
    Partner first;
    first.Application();
    EXPECT_EQ(be_roster->StartWatching(BMessenger(&watcher)), B_OK);
    EXPECT_EQ(be_roster->StartWatching(BMessenger(&watcher)), B_OK);
    auto second = std::make_unique<Partner>();
    const int32 secondTeam = second->Process();
    await({{B_SOME_APP_LAUNCHED, secondTeam}});
    // It hangs, and then continues.
    const int32 firstTeam = first.Process();
    first.Signal(SIGSTOP);
    await({{B_SOME_APP_QUIT, firstTeam}});
    first.Signal(SIGCONT);
    await({{B_SOME_APP_LAUNCHED, firstTeam}});
    second = nullptr; // killed
    await({{B_SOME_APP_QUIT, secondTeam}});
    first.Application().SendMessage(B_QUIT_REQUESTED);
    await({{B_SOME_APP_QUIT, firstTeam}});
    EXPECT_EQ(first.Await(), 0);
    EXPECT_EQ(be_roster->StopWatching(BMessenger(&watcher)), B_OK);
    EXPECT_EQ(be_roster->StopWatching(BMessenger(&watcher)), B_BAD_VALUE);
    const Partner third;
    third.Application();
    EXPECT_EQ(Ask(third.Application(), 'echo').what, uint32('repl'));
    EXPECT_TRUE(events.empty());
}

TEST_F(TeamTest, SendsOnlyTheNewestToOneThatDoesNotRead)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    Ask(application, 'echo');
    partner.Signal(SIGSTOP);
    BMessage tick = Tick(0, true);
    tick.AddData("body", B_RAW_TYPE, std::string(1200, 'x').data(), 1200);
    constexpr int32 kCount = 20000;
    {
        const AllocationCounter counter;
        for (int32 i = 0; i <= kCount; ++i) {
            test::ReplaceInt32(tick, "number", i);
            ASSERT_EQ(application.SendMessage(&tick), B_OK);
        }
        EXPECT_LT(counter.Peak(), 64u * 1024);
    }
    EXPECT_TRUE(application.IsValid());
    partner.Signal(SIGCONT);
    EXPECT_TRUE(test::RunUntil([&] { return AskNumber(application, "number") == kCount; }));
    // The messages that the system had taken already, and the last one.
    EXPECT_LT(AskNumber(application, "ticks"), 1000);
}

TEST_F(TeamTest, GivesUpOneThatHasTooMuchToReadUntilItSpeaksAgain)
{
    const Partner partner;
    const BMessenger application = partner.Application();
    BMessage keep('keep');
    keep.AddMessenger("messenger", BMessenger(fLooper));
    Ask(application, keep);
    const BMessage send = WithCount('send', 1);
    partner.Signal(SIGSTOP);
    application.SendMessage(&send);
    BMessage big('none');
    big.AddString("text", std::string(100000, 'x'));
    int count = 0;
    status_t status;
    while ((status = application.SendMessage(&big)) == B_OK && count < 1000)
        ++count;
    EXPECT_EQ(status, B_WOULD_BLOCK);
    EXPECT_GE(count, 40);
    EXPECT_LE(count, 60);
    EXPECT_TRUE(application.IsValid());
    EXPECT_TRUE(test::RunUntil([&application] { return !application.IsValid(); }));
    EXPECT_EQ(application.SendMessage(&big), B_BAD_HANDLER);
    // Though its socket could be connected to.
    EXPECT_FALSE(BMessenger(test::kPartnerSignature).IsValid());
    partner.Signal(SIGCONT);
    EXPECT_TRUE(test::RunUntil([&application] { return application.IsValid(); }));
    EXPECT_EQ(Ask(application, 'echo').what, uint32('repl'));
}

TEST_F(TeamTest, LeavesNothingBehind)
{
    const auto countFiles = [](const std::string& folder) {
        return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
    };
    const auto before = countFiles("/proc/self/fd");
    for (int round = 0; round < 3; ++round) {
        Partner partner;
        const BMessenger application = partner.Application();
        Ask(application, 'echo');
        application.SendMessage(B_QUIT_REQUESTED);
        EXPECT_EQ(partner.Await(), 0);
        EXPECT_TRUE(test::RunUntil([&application] { return !application.IsValid(); }));
        kits::TeamPort::Get().Close();
        EXPECT_EQ(countFiles(fRuntime.Path() + "/kits"), 0);
    }
    EXPECT_EQ(countFiles("/proc/self/fd"), before);
}

TEST_F(TeamTest, ReachesNobodyWhereTheFolderIsNotSafe)
{
    std::filesystem::create_directory_symlink("/tmp", fRuntime.Path() + "/kits");
    EXPECT_EQ(be_roster->TeamFor(test::kPartnerSignature), B_NAME_NOT_FOUND);
    const BMessenger elsewhere = kits::MessageAccess::MessengerTo({1, 5});
    EXPECT_EQ(elsewhere.SendMessage(1), B_PERMISSION_DENIED);
    EXPECT_FALSE(elsewhere.IsValid());
    EXPECT_EQ(be_roster->Launch(test::kPartnerSignature), B_PERMISSION_DENIED);
    EXPECT_EQ(be_roster->StartWatching(BMessenger(fLooper)), B_PERMISSION_DENIED);
}

TEST(Team, IsAloneWhereTheFolderIsNotSafe)
{
    const test::RuntimeFolder runtime;
    std::filesystem::create_directory_symlink("/tmp", runtime.Path() + "/kits");
    BApplication app("application/x-vnd.test-self", nullptr, kits::Presence::kSingle);
    EXPECT_EQ(app.InitCheck(), B_OK);
    app.PostMessage(B_QUIT_REQUESTED);
    EXPECT_GT(app.Run(), 0);
}
