// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamWatch.h"

#include "kits/application/Roster.h"
#include "kits/application/messages/MessagePrivate.h"
#include "tests/support/TeamFixture.h"

#include <csignal>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>

using test::Partner;

namespace {

/// An event that a watcher received about a team.
struct Event {
    uint32 code;
    int32 team;
    bool operator==(const Event&) const = default;
};

class Watcher : public test::Recorder {
public:
    Watcher()
        : Recorder([this](BMessage* message) {
            Event event{message->what, -1};
            EXPECT_EQ(message->FindInt32("team", &event.team), B_OK);
            events.push_back(event);
        })
    {
    }
    kits::Address Address() { return kits::MessageAccess::AddressOf(BMessenger(this)); }

    std::vector<Event> events;
};

} // namespace

/// The list of teams and of their watchers; the test plays the thread that looks.
class TeamWatchTest : public test::TeamTest {
protected:
    TeamWatchTest()
    {
        EXPECT_EQ(fFolder.Open(), B_OK);
        fLooper->AddHandler(&fWatcher);
        fLooper->AddHandler(&fOther);
    }

    void StartWatching(Watcher& watcher, uint32 events = B_REQUEST_LAUNCHED | B_REQUEST_QUIT)
    {
        fWatch.Add(watcher.Address(), events, fFolder.List());
    }
    /// Plays one round of the thread; returns when everybody has received its messages.
    void Look()
    {
        EXPECT_EQ(fWatch.Deadline(), kits::TeamWatch::Clock::time_point::min()) << "it has to come at once";
        std::vector<pollfd> polls;
        fWatch.AppendPolls(&polls);
        fWatch.Handle(polls.data(), fFolder);
        EXPECT_NE(fWatch.Deadline(), kits::TeamWatch::Clock::time_point::min()) << "nothing is left to be done";
        EXPECT_TRUE(test::RunUntil([this] { return fLooper->CountMessages() == 0; }));
    }
    /// Starts a team that can be found.
    static kits::team_address Launch(std::optional<Partner>& partner)
    {
        partner.emplace();
        return kits::MessageAccess::AddressOf(partner->Application()).team;
    }
    static void End(std::optional<Partner>& partner) { partner.reset(); }

    kits::TeamFolder fFolder;
    std::vector<kits::team_address> fUnreachable;
    kits::TeamWatch fWatch{
        {[] {}, [](kits::team_address, bool) {},
         [this](kits::team_address team) { return std::count(fUnreachable.begin(), fUnreachable.end(), team) == 0; }}};
    Watcher fWatcher;
    Watcher fOther;
    std::optional<Partner> fFirst;
    std::optional<Partner> fSecond;
};

TEST_F(TeamWatchTest, TellsOfWhatLaunchedBeforeItLookedForTheFirstTime)
{
    Launch(fFirst);
    StartWatching(fWatcher);
    Launch(fSecond);
    Look();
    EXPECT_EQ(fWatcher.events, (std::vector<Event>{{B_SOME_APP_LAUNCHED, fSecond->Process()}}));
}

TEST_F(TeamWatchTest, TellsOfWhatEndedBeforeItLookedForTheFirstTime)
{
    Launch(fFirst);
    const pid_t first = fFirst->Process();
    StartWatching(fWatcher);
    End(fFirst);
    Look();
    EXPECT_EQ(fWatcher.events, (std::vector<Event>{{B_SOME_APP_QUIT, first}}));
}

TEST_F(TeamWatchTest, TellsWhatWasAskedFor)
{
    Launch(fFirst);
    const pid_t first = fFirst->Process();
    StartWatching(fWatcher, B_REQUEST_QUIT);
    StartWatching(fOther, B_REQUEST_LAUNCHED);
    Launch(fSecond);
    End(fFirst);
    Look();
    EXPECT_EQ(fWatcher.events, (std::vector<Event>{{B_SOME_APP_QUIT, first}}));
    EXPECT_EQ(fOther.events, (std::vector<Event>{{B_SOME_APP_LAUNCHED, fSecond->Process()}}));
}

TEST_F(TeamWatchTest, TellsEachWhatHappenedSinceItCame)
{
    StartWatching(fWatcher);
    Launch(fFirst);
    StartWatching(fOther);
    Launch(fSecond);
    Look();
    EXPECT_EQ(fWatcher.events.size(), 2u);
    EXPECT_EQ(fOther.events, (std::vector<Event>{{B_SOME_APP_LAUNCHED, fSecond->Process()}}));
}

TEST_F(TeamWatchTest, TellsWhoComesLaterWhatHappenedSince)
{
    StartWatching(fWatcher);
    Look();
    const kits::team_address first = Launch(fFirst);
    StartWatching(fOther);
    Launch(fSecond);
    Look();
    EXPECT_EQ(fWatcher.events.size(), 2u);
    EXPECT_EQ(fOther.events, (std::vector<Event>{{B_SOME_APP_LAUNCHED, fSecond->Process()}}));
    fWatch.NoteClosed(first);
    EXPECT_TRUE(test::RunUntil([this] { return fLooper->CountMessages() == 0; }));
    EXPECT_EQ(fOther.events.back(), (Event{B_SOME_APP_QUIT, fFirst->Process()})) << "of all that end from then on";
}

TEST_F(TeamWatchTest, WhoWatchesAlreadyMissesNothingByAskingAgain)
{
    StartWatching(fWatcher);
    Launch(fFirst);
    StartWatching(fWatcher);
    Look();
    EXPECT_EQ(fWatcher.events, (std::vector<Event>{{B_SOME_APP_LAUNCHED, fFirst->Process()}}));
}

TEST_F(TeamWatchTest, TellsOfAnEndOnce)
{
    StartWatching(fWatcher);
    const kits::team_address first = Launch(fFirst);
    const pid_t process = fFirst->Process();
    Look();
    StartWatching(fOther);
    // The connection ends before anybody has looked for the second watcher.
    End(fFirst);
    fWatch.NoteClosed(first);
    Look();
    EXPECT_EQ(fOther.events, (std::vector<Event>{{B_SOME_APP_QUIT, process}}));
}

TEST_F(TeamWatchTest, SaysNothingOfWhatCannotBeReachedAndHasNotEnded)
{
    const kits::team_address first = Launch(fFirst);
    fUnreachable = {first};
    StartWatching(fWatcher);
    Look();
    EXPECT_TRUE(fWatcher.events.empty());
    fUnreachable.clear();
    StartWatching(fOther);
    Look();
    EXPECT_TRUE(fWatcher.events.empty()) << "it was there from the beginning";
}

TEST_F(TeamWatchTest, TellsADeathFromAnEndByASignalToQuit)
{
    StartWatching(fWatcher, B_REQUEST_DIED);
    Look();
    for (const char* mode : {"starting", "listed"}) {
        for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGKILL}) {
            SCOPED_TRACE(mode + std::string(" ") + strsignal(number));
            fWatcher.events.clear();
            fFirst.emplace(test::kPartnerSignature, mode);
            const kits::team_address team = kits::MessageAccess::AddressOf(fFirst->Application()).team;
            const pid_t process = fFirst->Process();
            if (mode == std::string("listed"))
                EXPECT_EQ(Ask(fFirst->Application(), 'log?').what, uint32('repl')) << "it runs";
            StartWatching(fOther);
            Look();
            fFirst->Signal(number);
            const int expected = mode == std::string("starting") || number == SIGKILL ? -number : 0;
            EXPECT_EQ(fFirst->Await(), expected);
            fWatch.NoteClosed(team);
            EXPECT_TRUE(test::RunUntil([this] { return fLooper->CountMessages() == 0; }));
            const std::vector<Event> death = {{B_SOME_APP_DIED, process}};
            EXPECT_EQ(fWatcher.events, number == SIGKILL ? death : std::vector<Event>());
            fWatch.Remove(fOther.Address());
        }
    }
}
