// SPDX-License-Identifier: MIT
#include "src/support/ui/MouseDownThread.h"

#include "kits/application/InterfaceLock.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

namespace {

/// The arguments of calls to the two functions. The tracker writes them under the interface lock, as the test reads
/// them.
struct Calls {
    std::vector<BPoint> moved;
    std::vector<uint32> buttons;
    std::vector<BPoint> released;
    std::vector<BView*> views;
    bool goOn = true;
    bool locked = true;
    bool inTracker = true;
};

Calls sCalls;

void Note(BView* view)
{
    sCalls.views.push_back(view);
    sCalls.locked = sCalls.locked && kits::InterfaceLock::Get().IsHeld();
    sCalls.inTracker = sCalls.inTracker && find_thread(nullptr) == find_thread("MouseTracker");
}

bool Moved(BView* view, BPoint& where, uint32 buttons)
{
    Note(view);
    sCalls.moved.push_back(where);
    sCalls.buttons.push_back(buttons);
    return sCalls.goOn;
}

void Released(BView* view, BPoint& where)
{
    Note(view);
    sCalls.released.push_back(where);
}

bool TrackerIsGone()
{
    return find_thread("MouseTracker") == B_NAME_NOT_FOUND;
}

class MouseDownThreadTest : public testing::Test {
protected:
    MouseDownThreadTest()
        : fWindow(new BWindow(BRect(100, 100, 300, 200), "tracking", B_TITLED_WINDOW, 0))
        , fView(new BView(BRect(10, 20, 110, 90), "tracked", B_FOLLOW_NONE, B_WILL_DRAW))
    {
        sCalls = {};
        fWindow->AddChild(fView);
        fWindow->Show();
        test::Turn();
    }
    ~MouseDownThreadTest() override
    {
        test::Release(fOther, BPoint(0, 0));
        if (fWindow != nullptr)
            CloseWindow();
        fOtherWindow->Quit();
        EXPECT_TRUE(test::WaitFor(TrackerIsGone));
    }

    void CloseWindow()
    {
        fWindow->Quit();
        fWindow = nullptr;
        test::Turn();
    }

    void Track() { MouseDownThread::TrackMouse(fView, Moved, Released, 1000); }

    static BView* MakeOther(BWindow* window)
    {
        auto* view = new BView(BRect(0, 0, 50, 50), "other", B_FOLLOW_NONE, B_WILL_DRAW);
        window->AddChild(view);
        window->Show();
        return view;
    }

    BWindow* fWindow;
    BView* fView;
    // The button is released here when the tracked view is gone.
    BWindow* fOtherWindow = new BWindow(BRect(400, 100, 500, 200), "other", B_TITLED_WINDOW, 0);
    BView* fOther = MakeOther(fOtherWindow);
};

} // namespace

TEST_F(MouseDownThreadTest, IsCalledAsLongAsAButtonIsDown)
{
    test::Press(fView, BPoint(5, 6), B_PRIMARY_MOUSE_BUTTON | B_SECONDARY_MOUSE_BUTTON);
    Track();
    ASSERT_TRUE(test::WaitFor([] { return sCalls.moved.size() >= 3; }));
    EXPECT_EQ(sCalls.moved.back(), BPoint(5, 6));
    EXPECT_EQ(sCalls.buttons.back(), uint32(B_PRIMARY_MOUSE_BUTTON | B_SECONDARY_MOUSE_BUTTON));
    test::MoveTo(fView, BPoint(30, 40));
    ASSERT_TRUE(test::WaitFor([] { return sCalls.moved.back() == BPoint(30, 40); }));
    EXPECT_TRUE(sCalls.released.empty());
    test::Release(fView, BPoint(31, 41));
    ASSERT_TRUE(test::WaitFor([] { return !sCalls.released.empty(); }));
    EXPECT_EQ(sCalls.released.back(), BPoint(31, 41));
    ASSERT_TRUE(test::WaitFor(TrackerIsGone));
    EXPECT_EQ(sCalls.released.size(), 1u);
    for (const BView* view : sCalls.views)
        EXPECT_EQ(view, fView);
    EXPECT_TRUE(sCalls.locked);
    EXPECT_TRUE(sCalls.inTracker);
}

TEST_F(MouseDownThreadTest, AReleaseBeforeTheFirstLookCallsOnlyTheRelease)
{
    test::MoveTo(fView, BPoint(7, 8));
    Track();
    ASSERT_TRUE(test::WaitFor([] { return !sCalls.released.empty(); }));
    EXPECT_EQ(sCalls.released.front(), BPoint(7, 8));
    EXPECT_TRUE(sCalls.moved.empty());
}

TEST_F(MouseDownThreadTest, TheMoveFunctionEndsItWithoutARelease)
{
    sCalls.goOn = false;
    test::Press(fView, BPoint(5, 5));
    Track();
    ASSERT_TRUE(test::WaitFor([] { return !sCalls.moved.empty(); }));
    ASSERT_TRUE(test::WaitFor(TrackerIsGone));
    test::Release(fView, BPoint(5, 5));
    test::Turn();
    EXPECT_EQ(sCalls.moved.size(), 1u);
    EXPECT_TRUE(sCalls.released.empty());
}

TEST_F(MouseDownThreadTest, BothFunctionsMayBeMissing)
{
    test::Press(fView, BPoint(5, 5));
    MouseDownThread::TrackMouse(fView, nullptr, nullptr, 1000);
    EXPECT_FALSE(TrackerIsGone());
    test::Release(fView, BPoint(5, 5));
    EXPECT_TRUE(test::WaitFor(TrackerIsGone));
}

TEST_F(MouseDownThreadTest, TheKernelKnowsItsNameAndPriority)
{
    test::Press(fView, BPoint(5, 5));
    Track();
    thread_info info;
    ASSERT_EQ(get_thread_info(find_thread("MouseTracker"), &info), B_OK);
    EXPECT_EQ(info.priority, 10);
}

TEST_F(MouseDownThreadTest, AViewThatIsDeletedIsNotCalledAgain)
{
    test::Press(fView, BPoint(5, 5));
    Track();
    ASSERT_TRUE(test::WaitFor([] { return !sCalls.moved.empty(); }));
    fView->RemoveSelf();
    delete fView;
    const size_t before = sCalls.views.size();
    ASSERT_TRUE(test::WaitFor(TrackerIsGone));
    EXPECT_EQ(sCalls.views.size(), before);
}

TEST_F(MouseDownThreadTest, AWindowThatIsClosedEndsIt)
{
    test::Press(fView, BPoint(5, 5));
    Track();
    ASSERT_TRUE(test::WaitFor([] { return !sCalls.moved.empty(); }));
    CloseWindow();
    const size_t before = sCalls.views.size();
    ASSERT_TRUE(test::WaitFor(TrackerIsGone));
    EXPECT_EQ(sCalls.views.size(), before);
    EXPECT_TRUE(sCalls.released.empty());
}

TEST_F(MouseDownThreadTest, AViewWithoutAWindowIsNotTracked)
{
    BView view(BRect(0, 0, 10, 10), "loose", B_FOLLOW_NONE, 0);
    MouseDownThread::TrackMouse(&view, Moved, Released, 1000);
    ASSERT_TRUE(test::WaitFor(TrackerIsGone));
    EXPECT_TRUE(sCalls.views.empty());
}
