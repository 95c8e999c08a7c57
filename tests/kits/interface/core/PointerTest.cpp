// SPDX-License-Identifier: MIT
#include "kits/application/Message.h"
#include "kits/interface/core/ClickCounter.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/GuiTest.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Text(BPoint point)
{
    return std::to_string(static_cast<int>(point.x)) + "," + std::to_string(static_cast<int>(point.y));
}

/// Records its input.
class Listener : public BView {
public:
    Listener(BRect frame, const char* name, std::string* log, uint32 flags = 0)
        : BView(frame, name, 0, flags)
        , fLog(log)
    {
    }
    void MouseDown(BPoint where) override
    {
        const BMessage* message = Window()->CurrentMessage();
        int32 buttons = 0;
        int32 clicks = 0;
        int64 when = 0;
        BPoint place;
        EXPECT_EQ(message->what, B_MOUSE_DOWN);
        EXPECT_EQ(message->FindInt32("buttons", &buttons), B_OK);
        EXPECT_EQ(message->FindInt32("clicks", &clicks), B_OK);
        EXPECT_TRUE(message->HasData("modifiers", B_INT32_TYPE));
        EXPECT_EQ(message->FindInt64("when", &when), B_OK);
        EXPECT_EQ(message->FindPoint("where", &place), B_OK);
        EXPECT_EQ(place, where);
        Note("down " + Text(where) + " b" + std::to_string(buttons) + " c" + std::to_string(clicks));
    }
    void MouseUp(BPoint where) override { Note("up " + Text(where)); }
    void MouseMoved(BPoint where, uint32 transit, const BMessage*) override
    {
        static const char* const kNames[] = {"entered", "inside", "exited"};
        Note(std::string(kNames[transit]) + " " + Text(where));
    }
    void KeyDown(const char* bytes, int32 count) override
    {
        Note("key " + std::string(bytes, static_cast<size_t>(count)));
        if (*bytes == 'q')
            BView::KeyDown(bytes, count);
    }
    void ContextMenuRequested(BPoint where) override { Note("menu " + Text(where)); }
    void Note(const std::string& what) { *fLog += std::string(Name()) + " " + what + "; "; }

private:
    std::string* fLog;
};

class Pointer : public testing::Test {
protected:
    Pointer()
        : window(new BWindow(BRect(100, 100, 299, 199), "stage", B_TITLED_WINDOW, 0))
        , outer(new Listener(BRect(0, 0, 99, 99), "a", &log, B_NAVIGABLE))
        , inner(new Listener(BRect(20, 20, 39, 39), "b", &log))
        , other(new Listener(BRect(100, 0, 199, 99), "c", &log, B_NAVIGABLE))
    {
        outer->AddChild(inner);
        window->AddChild(outer);
        window->AddChild(other);
        test::Show(window);
        log.clear();
    }
    ~Pointer() override
    {
        window->Quit();
        test::Turn();
    }
    std::string Take() { return std::exchange(log, ""); }

    std::string log;
    BWindow* window;
    Listener* outer;
    Listener* inner;
    Listener* other;
};

} // namespace

TEST_F(Pointer, ClicksAreCounted)
{
    test::MoveTo(outer, BPoint(5, 6));
    Take();
    test::Press(outer, BPoint(5, 6));
    EXPECT_EQ(Take(), "a down 5,6 b1 c1; ");
    test::Release(outer, BPoint(5, 7));
    EXPECT_EQ(Take(), "a up 5,7; ");
    test::MoveTo(inner, BPoint(1, 1));
    Take();
    test::Click(inner, BPoint(1, 1), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(Take(), "b down 1,1 b2 c1; b up 1,1; ");
    test::Click(inner, BPoint(1, 1), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(Take(), "b down 1,1 b2 c2; b up 1,1; ");
    test::Click(inner, BPoint(1, 2), B_SECONDARY_MOUSE_BUTTON);
    EXPECT_EQ(Take(), "b down 1,2 b2 c3; b up 1,2; ");
    test::Click(inner, BPoint(1, 2), B_TERTIARY_MOUSE_BUTTON);
    EXPECT_EQ(Take(), "b down 1,2 b4 c1; b up 1,2; ");
}

TEST(ClickCounter, SoonNearAndWithTheSameButtonIsOneMore)
{
    kits::ClickCounter counter;
    int a = 0;
    int b = 0;
    EXPECT_EQ(counter.Count(&a, 1, BPoint(5, 5), 1000, 400, 4), 1);
    EXPECT_EQ(counter.Count(&a, 1, BPoint(9, 1), 1400, 400, 4), 2);
    EXPECT_EQ(counter.Count(&a, 1, BPoint(5, 5), 1500, 400, 4), 3);
    EXPECT_EQ(counter.Count(&a, 1, BPoint(5, 5), 1901, 400, 4), 1);  // too late
    EXPECT_EQ(counter.Count(&a, 1, BPoint(10, 5), 1902, 400, 4), 1); // too far
    EXPECT_EQ(counter.Count(&a, 2, BPoint(10, 5), 1903, 400, 4), 1); // another button
    EXPECT_EQ(counter.Count(&b, 2, BPoint(10, 5), 1904, 400, 4), 1); // another view
    counter.Forget(&b);
    EXPECT_EQ(counter.Count(&b, 2, BPoint(10, 5), 1905, 400, 4), 1);
}

TEST_F(Pointer, TransitsFollowThePlaceWithoutAButton)
{
    test::MoveTo(outer, BPoint(1, 1));
    EXPECT_EQ(Take(), "a entered 1,1; ");
    test::MoveTo(outer, BPoint(2, 1));
    EXPECT_EQ(Take(), "a inside 2,1; ");
    test::MoveTo(inner, BPoint(0, 0));
    EXPECT_EQ(Take(), "a exited 20,20; b entered 0,0; ");
    test::MoveTo(other, BPoint(3, 3));
    EXPECT_EQ(Take(), "b exited 83,-17; c entered 3,3; ");
    test::MoveTo(other, BPoint(300, -10));
    EXPECT_EQ(Take(), "c exited 300,-10; ");
}

TEST_F(Pointer, TransitsFollowThePlaceWithAButtonToo)
{
    test::MoveTo(outer, BPoint(5, 5));
    test::Press(outer, BPoint(5, 5));
    Take();
    // The toolkit sends all of these to the pressed widget.
    test::MoveTo(outer, BPoint(6, 5));
    EXPECT_EQ(Take(), "a inside 6,5; ");
    test::MoveTo(outer, BPoint(50, -3));
    EXPECT_EQ(Take(), "a exited 50,-3; ");
    test::MoveTo(outer, BPoint(51, -3));
    EXPECT_EQ(Take(), "");
    test::MoveTo(outer, BPoint(150, 10));
    EXPECT_EQ(Take(), "c entered 50,10; ");
    test::Release(outer, BPoint(150, 10));
    // The release goes where the press went.
    EXPECT_EQ(Take(), "a up 150,10; ");
}

TEST_F(Pointer, APressEntersAViewThatCameBelowAPointerAtRest)
{
    test::Press(inner, BPoint(5, 5));
    EXPECT_EQ(Take(), "b entered 5,5; b down 5,5 b1 c1; ");
    test::MoveTo(inner, BPoint(70, 50));
    EXPECT_EQ(Take(), "b exited 70,50; a entered 90,70; ");
    test::Release(inner, BPoint(70, 50));
    EXPECT_EQ(Take(), "b up 70,50; ");
    // It already knows that the pointer is in the view.
    test::Press(outer, BPoint(90, 70));
    EXPECT_EQ(Take(), "a down 90,70 b1 c1; ");
    test::Release(outer, BPoint(90, 70));
}

TEST_F(Pointer, AViewThatGoesIsForgotten)
{
    test::MoveTo(inner, BPoint(5, 5));
    Take();
    outer->RemoveChild(inner);
    delete inner;
    test::MoveTo(outer, BPoint(25, 25));
    EXPECT_EQ(Take(), "a entered 25,25; ");
}

TEST_F(Pointer, AViewMayDeleteItselfInItsHook)
{
    struct Fleeting : BView {
        using BView::BView;
        void MouseDown(BPoint) override
        {
            RemoveSelf();
            delete this;
        }
    };
    auto* fleeting = new Fleeting(BRect(0, 0, 9, 9), "", 0, 0);
    other->AddChild(fleeting);
    test::Press(fleeting, BPoint(1, 1));
    EXPECT_EQ(other->CountChildren(), 0);
    test::Turn();
    test::Release(other, BPoint(1, 1));
}

TEST_F(Pointer, CanBeAskedForAtAnyTime)
{
    BPoint where;
    uint32 buttons = 99;
    test::MoveTo(outer, BPoint(7, 8));
    outer->GetMouse(&where, &buttons, false);
    EXPECT_EQ(where, BPoint(7, 8));
    EXPECT_EQ(buttons, 0U);
    other->GetMouse(&where, nullptr, false);
    EXPECT_EQ(where, BPoint(-93, 8));
    test::Press(outer, BPoint(9, 9), B_PRIMARY_MOUSE_BUTTON | B_SECONDARY_MOUSE_BUTTON);
    inner->GetMouse(&where, &buttons, false);
    EXPECT_EQ(where, BPoint(-11, -11));
    EXPECT_EQ(buttons, B_PRIMARY_MOUSE_BUTTON | B_SECONDARY_MOUSE_BUTTON);
    test::Release(outer, BPoint(9, 9));
    inner->GetMouse(nullptr, &buttons);
    EXPECT_EQ(buttons, 0U);
}

TEST_F(Pointer, KeysGoToTheFocus)
{
    outer->MakeFocus();
    EXPECT_TRUE(outer->IsFocus());
    test::Key(window, 'x');
    EXPECT_EQ(Take(), "a key x; ");
    test::Key(window, B_LEFT_ARROW);
    EXPECT_EQ(Take(), std::string("a key ") + static_cast<char>(B_LEFT_ARROW) + "; ");
    other->MakeFocus();
    EXPECT_FALSE(outer->IsFocus());
    test::Key(window, 'y');
    EXPECT_EQ(Take(), "c key y; ");
    other->MakeFocus(false);
    EXPECT_FALSE(other->IsFocus());
}

TEST_F(Pointer, AKeyThatIsNotUsedGoesToTheParent)
{
    inner->SetFlags(B_NAVIGABLE);
    inner->MakeFocus();
    test::Key(window, 'p');
    EXPECT_EQ(Take(), "b key p; ");
    test::Key(window, 'q');
    EXPECT_EQ(Take(), "b key q; a key q; ");
}

TEST_F(Pointer, TabWalksThroughNavigableViews)
{
    outer->MakeFocus();
    test::Key(window, B_TAB);
    EXPECT_TRUE(other->IsFocus());
    EXPECT_EQ(Take(), "");
}

TEST_F(Pointer, ShiftF10OpensTheMenuInTheMiddle)
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_F10, Qt::ShiftModifier);
    QCoreApplication::sendEvent(kits::ViewWidget(inner), &event);
    EXPECT_EQ(Take(), "b menu 10,10; ");
    QKeyEvent plain(QEvent::KeyPress, Qt::Key_F10, Qt::NoModifier);
    QCoreApplication::sendEvent(kits::ViewWidget(inner), &plain);
    EXPECT_EQ(Take().find("menu"), std::string::npos);
}

TEST_F(Pointer, TheMenuKeyOpensTheMenuInTheMiddle)
{
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(kits::ViewWidget(inner), &event);
    EXPECT_EQ(Take(), "b menu 10,10; ");
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(kits::ViewWidget(inner), &click);
    EXPECT_EQ(Take(), "");
}
