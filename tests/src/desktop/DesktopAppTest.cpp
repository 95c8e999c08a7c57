// SPDX-License-Identifier: MIT
#include "tests/src/desktop/DesktopAppTest.h"

#include "kits/application/messages/MessagePrivate.h"
#include "kits/interface/Screen.h"
#include "kits/interface/View.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/support/TypeConstants.h"
#include "src/desktop/Autostart.h"
#include "src/desktop/Placement.h"
#include "src/desktop/ReplicantWindow.h"
#include "src/support/Qel.h"
#include "tests/support/DeclaredField.h"
#include "tests/support/FieldAt.h"
#include "tests/support/ReplaceValue.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

#include <cmath>
#include <limits>

namespace {

/// It ends by itself.
const auto kItself = [](DesktopApp&) { return false; };
const std::string kEntry = std::string("autostart/") + Autostart::kFile;
const std::string kStore = "x-vnd.kvt-Qel-Desktop.user";

} // namespace

TEST_F(DesktopAppTest, ShowsWhatWasDroppedWhereItWasDropped)
{
    Run(
        [](DesktopApp& app) {
            ASSERT_EQ(app.CountReplicants(), 1U);
            ReplicantWindow* window = app.ReplicantAt(0);
            EXPECT_EQ(window->Frame(), BRect(100, 120, 300, 200));
            EXPECT_EQ(window->Look(), B_NO_BORDER_WINDOW_LOOK);
            EXPECT_EQ(window->Feel(), B_DESKTOP_WINDOW_FEEL);
            auto* chart = dynamic_cast<ChartView*>(window->ChildAt(0));
            ASSERT_NE(chart, nullptr);
            EXPECT_TRUE(chart->IsReplicant());
            EXPECT_STREQ(chart->Title(), "stands there");
            EXPECT_EQ(chart->Frame(), BRect(0, 0, 200, 80));
        },
        {Request(Archive())});
}

TEST_F(DesktopAppTest, KeepsPlacesAndSettingsOverSessions)
{
    Run(nullptr, {Request(Archive()), Request(Archive(), BPoint(400, 300))});
    EXPECT_TRUE(fConfig.Has(kEntry));
    Run(
        [](DesktopApp& app) {
            ASSERT_EQ(app.CountReplicants(), 2U);
            EXPECT_EQ(app.ReplicantAt(0)->Frame(), BRect(100, 120, 300, 200));
            auto* chart = dynamic_cast<ChartView*>(app.ReplicantAt(1)->ChildAt(0));
            chart->SetTitle("another");
            chart->ResizeTo(50, 60);
            BMessage moved(B_DROPPED_ON_DESKTOP);
            moved.AddPoint("where", BPoint(510, 320));
            moved.AddPoint("offset", BPoint(10, 20));
            app.ReplicantAt(1)->PostMessage(&moved, chart);
        },
        {}, [](DesktopApp& app) { return app.ReplicantAt(1)->Frame() == BRect(500, 300, 550, 360); });
    Run([](DesktopApp& app) {
        ASSERT_EQ(app.CountReplicants(), 2U);
        EXPECT_EQ(app.ReplicantAt(1)->Frame(), BRect(500, 300, 550, 360));
        EXPECT_STREQ(dynamic_cast<ChartView*>(app.ReplicantAt(1)->ChildAt(0))->Title(), "another");
    });
}

TEST_F(DesktopAppTest, TheWindowFollowsItsChartAndTheOtherWayRound)
{
    Run(
        [](DesktopApp& app) {
            ReplicantWindow* window = app.ReplicantAt(0);
            auto* chart = dynamic_cast<ChartView*>(window->ChildAt(0));
            chart->ResizeTo(20, 20);
            EXPECT_EQ(window->Frame(), BRect(100, 120, 120, 140));
            window->ResizeTo(150, 90);
            window->FrameResized(150, 90);
            EXPECT_EQ(chart->Frame(), BRect(0, 0, 150, 90));
            // Nobody makes it too small to be held.
            window->ResizeTo(3, 3);
            EXPECT_EQ(window->Frame(), BRect(100, 120, 120, 140));
        },
        {Request(Archive())});
}

TEST_F(DesktopAppTest, EndsWithTheLastAndForgetsItself)
{
    Run([](DesktopApp& app) { app.ReplicantAt(0)->PostMessage(MSG_REMOVE_REPLICANT, app.ReplicantAt(0)->ChildAt(0)); },
        {Request(Archive())}, kItself);
    EXPECT_FALSE(fConfig.Has(kEntry));
    EXPECT_EQ(Shown({}), 0U);
}

TEST_F(DesktopAppTest, LeavesTheDesktopWhenAShelfHasTakenIt)
{
    Run([](DesktopApp& app) { app.ReplicantAt(0)->PostMessage(B_REPLICANT_TAKEN, app.ReplicantAt(0)->ChildAt(0)); },
        {Request(Archive())}, kItself);
    EXPECT_EQ(Shown({}), 0U);
}

TEST_F(DesktopAppTest, WhatTheApplicationHasTakenGoesOverSessionsToo)
{
    std::vector<std::string> identities;
    Run(
        [&](DesktopApp& app) {
            for (size_t i = 0; i < app.CountReplicants(); i++)
                identities.push_back(app.ReplicantAt(i)->Identity());
        },
        {Request(Archive()), Request(Archive(), BPoint(300, 300)), Request(Archive(), BPoint(500, 300))});
    ASSERT_EQ(identities.size(), 3U);
    EXPECT_TRUE(identities[0] != identities[1] && identities[1] != identities[2] && identities[2] != identities[0]);
    Run(
        [&](DesktopApp& app) {
            BMessage taken(B_REPLICANT_TAKEN);
            for (const std::string& identity : {std::string("unknown"), identities[2], std::string(), identities[0]})
                taken.AddString("Identity", identity);
            app.PostMessage(&taken);
        },
        {}, [](DesktopApp& app) { return app.CountReplicants() == 1; });
    Run([&](DesktopApp& app) {
        ASSERT_EQ(app.CountReplicants(), 1U);
        EXPECT_EQ(app.ReplicantAt(0)->Identity(), identities[1]);
        EXPECT_EQ(app.ReplicantAt(0)->Frame().LeftTop(), BPoint(300, 300));
    });
}

TEST_F(DesktopAppTest, WhoDropsOneDoesNotChooseItsIdentity)
{
    BMessage request = Request(Archive());
    request.AddString("Identity", "chosen");
    Run([](DesktopApp& app) { EXPECT_NE(app.ReplicantAt(0)->Identity(), "chosen"); }, {request});
}

TEST_F(DesktopAppTest, TheKeyThatQuitsLeavesTheChartsWhereTheyAre)
{
    int turns = 0;
    Run(
        [](DesktopApp& app) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Q, Qt::ControlModifier);
            QCoreApplication::sendEvent(kits::WindowWidget(app.ReplicantAt(0))->windowHandle(), &press);
        },
        {Request(Archive())},
        [&turns](DesktopApp& app) {
            EXPECT_EQ(app.CountReplicants(), 1U);
            return ++turns == 10;
        });
    EXPECT_EQ(turns, 10) << "it goes on until it is ended";
    EXPECT_EQ(Shown({}), 1U);
}

TEST_F(DesktopAppTest, PerformsARequestOnceHoweverOftenItComes)
{
    BMessage request = Request(Archive());
    request.AddString("Request", "this one");
    BMessage other = Request(Archive());
    other.AddString("Request", "another one");
    const BMessage nameless = Request(Archive());
    EXPECT_EQ(Shown({request, request, other, request}), 2U);
    // The next host does the same.
    EXPECT_EQ(Shown({request, other}), 2U);
    EXPECT_EQ(Shown({nameless, nameless}), 4U);
}

TEST_F(DesktopAppTest, RemembersTheNewestRequests)
{
    BMessage first = Request(Archive(20, 20));
    first.AddString("Request", "first");
    std::vector<BMessage> requests{first};
    for (size_t i = 0; i < DesktopApp::kMostRequests; i++) {
        // A request that is not performed is not remembered either.
        BMessage refused(MSG_SHOW_ON_DESKTOP);
        refused.AddString("Request", std::to_string(i));
        requests.push_back(refused);
    }
    EXPECT_EQ(Shown(requests), 1U);
    EXPECT_EQ(Shown({first}), 1U);
    requests.clear();
    for (size_t i = 0; i < DesktopApp::kMostRequests; i++) {
        requests.push_back(Request(Archive(20, 20)));
        requests.back().AddString("Request", std::to_string(i));
    }
    const size_t all = 1 + DesktopApp::kMostRequests;
    EXPECT_EQ(Shown(requests), all);
    EXPECT_EQ(Shown({requests.back()}), all);
    EXPECT_EQ(Shown({first}), all + 1);
}

TEST_F(DesktopAppTest, IgnoresWhatIsNoChart)
{
    BMessage foreign = Archive();
    test::ReplaceString(foreign, "add_on", "application/x-vnd.other-Thing");
    BMessage another = Archive();
    another.RemoveName("class");
    another.AddString("class", "BView");
    BMessage large = Archive();
    const std::string much(300 * 1024, 'x');
    large.AddString("much", much);
    const BMessage empty(MSG_SHOW_ON_DESKTOP);
    EXPECT_EQ(Shown({Request(foreign), Request(another), Request(large), Request(BMessage()), empty}), 0U);
    EXPECT_FALSE(fConfig.Has(kEntry));
}

TEST_F(DesktopAppTest, HoldsSizesAndPlacesToTheScreens)
{
    const BRect screen = kits::ScreenFrames().front();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    std::vector<BMessage> requests;
    for (const BRect& frame : {BRect(0, 0, 16383, 16383), BRect(0, 0, nan, 5), BRect(0, 0, 1, 1), BRect(9, 9, 0, 0)}) {
        BMessage archive = Archive();
        test::ReplaceRect(archive, "_frame", frame);
        for (const BPoint& where : {BPoint(1e9F, 3), BPoint(nan, nan), BPoint(-5000, 90000)})
            requests.push_back(Request(archive, where));
    }
    Run(
        [&](DesktopApp& app) {
            ASSERT_EQ(app.CountReplicants(), requests.size());
            for (size_t i = 0; i < app.CountReplicants(); i++) {
                const BRect frame = app.ReplicantAt(i)->Frame();
                EXPECT_TRUE(screen.Contains(BRect(frame.left, frame.top, frame.left + 7, frame.top + 7))) << i;
                EXPECT_TRUE(frame.Width() >= 20 && frame.Width() <= screen.Width()) << i;
                EXPECT_TRUE(frame.Height() >= 20 && frame.Height() <= screen.Height()) << i;
            }
        },
        requests);
}

TEST_F(DesktopAppTest, EverythingThatIsStoredIsDeclared)
{
    Run(nullptr, {Request(Archive())});
    const Preferences store(kDesktopSignature, false);
    int fields = 0;
    const std::function<void(const BMessage&)> walk = [&](const BMessage& archive) {
        const char* key = nullptr;
        type_code type = 0;
        for (int32 i = 0; test::FieldAt(archive, B_ANY_TYPE, i, &key, &type, nullptr); i++) {
            fields++;
            const kits::AnyField* const field = test::DeclaredField(key);
            ASSERT_NE(field, nullptr) << key << " is not declared";
            EXPECT_EQ(field->Type(), type) << key;
            BMessage inner;
            if (type == B_MESSAGE_TYPE && archive.FindMessage(key, &inner) == B_OK)
                walk(inner);
        }
    };
    walk(store);
    EXPECT_GT(fields, 20);
    EXPECT_EQ(test::DeclaredField("Replicant")->Most(), DesktopApp::kMost);
    EXPECT_EQ(test::DeclaredField("Place")->Most(), Places::kMost);
}

TEST_F(DesktopAppTest, StaysWhereItIsWhateverItIsToldOfADrag)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Run(
        [&](DesktopApp& app) {
            ReplicantWindow* const window = app.ReplicantAt(0);
            const BRect before = window->Frame();
            for (const BPoint& wrong : {BPoint(nan, 3), BPoint(3, nan), BPoint(1e30F, 3), BPoint(3, -1e30F)}) {
                for (const bool isOffset : {false, true}) {
                    BMessage message(B_DROPPED_ON_DESKTOP);
                    message.AddPoint("where", isOffset ? BPoint(10, 10) : wrong);
                    message.AddPoint("offset", isOffset ? wrong : BPoint(2, 2));
                    window->MessageReceived(&message);
                }
                BMessage message(MSG_MOVE_REPLICANT);
                message.AddPoint("By", wrong);
                window->MessageReceived(&message);
            }
            EXPECT_EQ(window->Frame(), before);
        },
        {Request(Archive())});
}

TEST_F(DesktopAppTest, LeavesOutPlacesThatNobodyCanHaveWished)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::string longName(5000, 'x');
    BMessage saved;
    const auto add = [&](const char* screens, const BRect& frame) {
        BMessage place;
        place.AddString("Screens", screens);
        place.AddRect("Frame", frame);
        saved.AddMessage("Place", &place);
    };
    add("one", BRect(nan, 0, 10, 10));
    add("two", BRect(0, 0, nan, 10));
    add("three", BRect(0, 0, -10, 10));
    add("four", BRect(1e30F, 0, 1e30F, 10));
    add(longName.c_str(), BRect(0, 0, 10, 10));
    Places places;
    places.LoadFrom(saved);
    EXPECT_FALSE(places.For("one").IsValid());
    add("five", BRect(1, 2, 30, 40));
    places.LoadFrom(saved);
    EXPECT_EQ(places.For("one"), BRect(1, 2, 30, 40));
}

TEST_F(DesktopAppTest, ShowsNoMoreThanCanBeShown)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(Shown(std::vector<BMessage>(DesktopApp::kMost + 100, Request(Archive(20, 20)))), DesktopApp::kMost);
    const std::string said = testing::internal::GetCapturedStderr();
    const std::string line = "qel-desktop: what was dropped is ignored: there are too many\n";
    EXPECT_NE(said.find(line), std::string::npos);
    EXPECT_EQ(said.find(line), said.rfind(line));
}

TEST_F(DesktopAppTest, ShowsInReachWhatStoodOnAScreenThatIsGone)
{
    const std::string gone = "800x600+9000+9000";
    const BRect there(9100, 9200, 9300, 9280);
    {
        Preferences store(kDesktopSignature, false);
        BMessage saved;
        const BMessage archive = Archive();
        saved.AddMessage("Archive", &archive);
        Places places;
        places.Wish(gone, there);
        places.SaveTo(&saved);
        store.AddMessage("Replicant", &saved);
        ASSERT_EQ(store.Sync(), B_OK);
    }
    const BRect screen = kits::ScreenFrames().front();
    // Repeatedly: being shown elsewhere does not change the user's place.
    for (int i = 0; i < 2; i++) {
        Run([&](DesktopApp& app) {
            ASSERT_EQ(app.CountReplicants(), 1U);
            EXPECT_TRUE(screen.Contains(app.ReplicantAt(0)->Frame()));
            EXPECT_EQ(app.ReplicantAt(0)->Frame().Width(), there.Width());
            app.PostMessage(B_SCREEN_CHANGED);
        });
    }
    const Preferences store(kDesktopSignature, false);
    BMessage saved;
    ASSERT_EQ(store.FindMessage("Replicant", &saved), B_OK);
    Places places;
    places.LoadFrom(saved);
    EXPECT_EQ(places.For(gone), there);
    EXPECT_EQ(places.For("another"), there);
}

TEST_F(DesktopAppTest, KeepsWhatANewerVersionHasStored)
{
    Run(nullptr, {Request(Archive())});
    {
        Preferences store(kDesktopSignature, false);
        BMessage saved;
        BMessage archive = Archive();
        archive.RemoveName("class");
        archive.AddString("class", "BetterChart");
        saved.AddMessage("Archive", &archive);
        store.AddMessage("Replicant", &saved);
        store.AddInt32("Replicant", 5);
        ASSERT_EQ(store.Sync(), B_OK);
    }
    EXPECT_EQ(Shown({}), 1U);
    EXPECT_EQ(Shown({}), 1U);
    EXPECT_NE(fConfig.Get(kStore).find("BetterChart"), std::string::npos);
}

TEST_F(DesktopAppTest, ThereIsOneInASession)
{
    Run(
        [](DesktopApp&) {
            const BMessenger one(kDesktopSignature);
            EXPECT_TRUE(one.IsValid());
        },
        {Request(Archive())});
}

TEST_F(DesktopAppTest, AChartIsMovedAndResizedByKeyboard)
{
    Run(
        [](DesktopApp& app) {
            app.PostMessage(MSG_ACTIVATE_REPLICANTS);
            ASSERT_EQ(app.CountReplicants(), 1U);
            ReplicantWindow* window = app.ReplicantAt(0);
            window->ChildAt(0)->MakeFocus();
            test::Key(window, B_RIGHT_ARROW, B_SHIFT_KEY);
            test::Key(window, B_DOWN_ARROW);
            test::Key(window, B_RIGHT_ARROW, B_COMMAND_KEY | B_SHIFT_KEY);
            test::Key(window, B_UP_ARROW, B_COMMAND_KEY);
        },
        {Request(Archive())}, [](DesktopApp& app) { return app.ReplicantAt(0)->Frame() == BRect(110, 121, 320, 200); });
    // The new frame is kept.
    Run([](DesktopApp& app) {
        ASSERT_EQ(app.CountReplicants(), 1U);
        EXPECT_EQ(app.ReplicantAt(0)->Frame(), BRect(110, 121, 320, 200));
        ReplicantWindow* window = app.ReplicantAt(0);
        window->ChildAt(0)->MakeFocus();
        // Not smaller than the mouse can make it.
        for (int i = 0; i < 10; i++)
            test::Key(window, B_UP_ARROW, B_COMMAND_KEY | B_SHIFT_KEY);
        EXPECT_EQ(window->ChildAt(0)->Bounds().Height(), kSmallestReplicant);
        // A selected caption has precedence.
        auto* chart = dynamic_cast<ChartView*>(window->ChildAt(0));
        chart->ResizeTo(200, 80);
        const BPoint before = chart->Settings().title.where;
        test::Key(window, B_ENTER);
        test::Key(window, B_RIGHT_ARROW);
        EXPECT_NE(chart->Settings().title.where, before);
        EXPECT_EQ(window->Frame().LeftTop(), BPoint(110, 121));
    });
}

TEST_F(DesktopAppTest, TheKeyboardGoesFromChartToChart)
{
    std::string activated;
    const auto wait = [&activated](DesktopApp& app, size_t index) {
        EXPECT_TRUE(test::WaitFor([&] {
            ReplicantWindow* const window = app.ReplicantAt(index);
            bool isOneActive = false;
            for (size_t i = 0; i < app.CountReplicants(); i++)
                isOneActive = isOneActive || app.ReplicantAt(i)->IsActive();
            // Charts that find no application show an alert, which takes the keyboard focus.
            if (!isOneActive)
                window->Activate();
            return window->IsActive() && window->ChildAt(0)->IsFocus();
        })) << index;
        activated += static_cast<char>('0' + index);
    };
    Run(
        [&wait](DesktopApp& app) {
            ASSERT_EQ(app.CountReplicants(), 3U);
            app.MessageReceived(std::make_unique<BMessage>(MSG_ACTIVATE_REPLICANTS).get());
            wait(app, 0);
            test::Key(app.ReplicantAt(0), B_TAB);
            wait(app, 1);
            test::Key(app.ReplicantAt(1), B_TAB);
            wait(app, 2);
            test::Key(app.ReplicantAt(2), B_TAB);
            wait(app, 0);
            test::Key(app.ReplicantAt(0), B_TAB, B_SHIFT_KEY);
            wait(app, 2);
            // When it goes, it passes the focus on.
            app.Remove(app.ReplicantAt(2));
            wait(app, 0);
        },
        {Request(Archive()), Request(Archive(), BPoint(300, 300)), Request(Archive(), BPoint(500, 300))});
    EXPECT_EQ(activated, "012020");
}

TEST_F(DesktopAppTest, AStoreThatWasKeptIsToldOfBeforeThereIsNothingMoreToDo)
{
    fConfig.Put(kStore, "broken");
    testing::internal::CaptureStderr();
    bool isAsked = false;
    Run([&](DesktopApp& app) {
        EXPECT_EQ(app.CountReplicants(), 0U);
        isAsked = QApplication::activeModalWidget() != nullptr;
    });
    EXPECT_TRUE(isAsked);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("kept as " + kStore + ".kept"), std::string::npos);
    EXPECT_EQ(fConfig.Get(kStore + ".kept"), "broken");
}

TEST_F(DesktopAppTest, KeysOfAnotherTypeDoNotKeepChartsFromBeingSaved)
{
    {
        Preferences store(kDesktopSignature, false);
        store.AddInt32("Version", 1);
        store.AddString("Replicant", "none");
        store.AddString("Nobody's", "stays");
        ASSERT_EQ(store.Sync(), B_OK);
    }
    EXPECT_EQ(Shown({Request(Archive())}), 1U);
    const Preferences store(kDesktopSignature, false, true);
    EXPECT_TRUE(store.HasData("Version", B_STRING_TYPE));
    EXPECT_TRUE(store.HasData("Replicant", B_MESSAGE_TYPE));
    EXPECT_TRUE(store.HasData("Nobody's", B_STRING_TYPE));
}
