// SPDX-License-Identifier: MIT
#include "kits/interface/View.h"

#include "kits/application/Archivable.h"
#include "kits/application/Message.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/GuiTest.h"

#include <QWidget>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

/// Records the calls of its hooks.
class Witness : public BView {
public:
    Witness(BRect frame, const char* name, std::string* log, uint32 mode = B_FOLLOW_NONE, uint32 flags = 0)
        : BView(frame, name, mode, flags)
        , fLog(log)
    {
    }
    ~Witness() override { *fLog += std::string("~") + Name() + " "; }

    void AttachedToWindow() override { Note("attached", Window() != nullptr); }
    void AllAttached() override { Note("allAttached", Window() != nullptr); }
    void DetachedFromWindow() override { Note("detached", Window() != nullptr); }
    void AllDetached() override { Note("allDetached", Window() != nullptr); }
    void FrameMoved(BPoint) override { Note("moved", true); }
    void FrameResized(float, float) override { Note("resized", true); }

    void Note(const char* what, bool fine) { *fLog += std::string(Name()) + "." + what + (fine ? " " : "! "); }

private:
    std::string* fLog;
};

/// A window on the screen, destroyed at the end of the test.
struct Stage {
    explicit Stage(BRect frame = BRect(100, 100, 299, 199))
        : window(new BWindow(frame, "stage", B_TITLED_WINDOW, 0))
    {
    }
    ~Stage()
    {
        window->Quit();
        test::Turn();
    }
    void Show() { test::Show(window); }

    BWindow* window;
};

} // namespace

TEST(View, HooksComeFromTheOutsideInAndBack)
{
    std::string log;
    Stage stage;
    auto* outer = new Witness(BRect(0, 0, 99, 99), "a", &log);
    auto* inner = new Witness(BRect(0, 0, 9, 9), "b", &log);
    outer->AddChild(inner);
    EXPECT_EQ(log, "");
    EXPECT_EQ(inner->Looper(), nullptr);
    stage.window->AddChild(outer);
    EXPECT_EQ(log, "a.attached b.attached b.allAttached a.allAttached ");
    EXPECT_EQ(inner->Looper(), stage.window);
    EXPECT_EQ(inner->Window(), stage.window);
    EXPECT_EQ(outer->Parent(), nullptr);
    EXPECT_EQ(inner->Parent(), outer);
    log.clear();
    EXPECT_TRUE(outer->RemoveSelf());
    EXPECT_EQ(log, "a.detached b.detached b.allDetached a.allDetached ");
    EXPECT_EQ(inner->Looper(), nullptr);
    EXPECT_EQ(inner->Window(), nullptr);
    EXPECT_FALSE(outer->RemoveSelf());
    // The same view comes back.
    log.clear();
    stage.window->AddChild(outer);
    EXPECT_EQ(log, "a.attached b.attached b.allAttached a.allAttached ");
}

TEST(View, ChildrenAddedInAHookAreAttachedOnce)
{
    struct Adder : Witness {
        using Witness::Witness;
        void AttachedToWindow() override
        {
            Witness::AttachedToWindow();
            AddChild(child);
        }
        BView* child = nullptr;
    };
    std::string log;
    Stage stage;
    auto* adder = new Adder(BRect(0, 0, 9, 9), "a", &log);
    adder->child = new Witness(BRect(0, 0, 9, 9), "b", &log);
    stage.window->AddChild(adder);
    EXPECT_EQ(log, "a.attached b.attached b.allAttached a.allAttached ");
}

TEST(View, AHookMayDeleteItsOwnView)
{
    struct Fleeting : BView {
        using BView::BView;
        void AttachedToWindow() override
        {
            RemoveSelf();
            delete this;
        }
    };
    Stage stage;
    auto* outer = new BView(BRect(0, 0, 99, 99), "outer", 0, 0);
    outer->AddChild(new Fleeting(BRect(0, 0, 9, 9), "gone", 0, 0));
    outer->AddChild(new BView(BRect(0, 0, 9, 9), "stays", 0, 0));
    stage.window->AddChild(outer);
    ASSERT_EQ(outer->CountChildren(), 1);
    EXPECT_STREQ(outer->ChildAt(0)->Name(), "stays");
}

TEST(View, OwnsItsChildren)
{
    std::string log;
    auto* outer = new Witness(BRect(0, 0, 99, 99), "a", &log);
    outer->AddChild(new Witness(BRect(0, 0, 9, 9), "b", &log));
    auto* kept = new Witness(BRect(0, 0, 9, 9), "c", &log);
    outer->AddChild(kept);
    EXPECT_TRUE(outer->RemoveChild(kept));
    EXPECT_FALSE(outer->RemoveChild(kept));
    delete outer;
    EXPECT_EQ(log, "~a ~b ");
    delete kept;
}

TEST(View, TheTreeHoldsEveryViewOnce)
{
    BView outer(BRect(0, 0, 9, 9), "outer", 0, 0);
    auto* first = new BView(BRect(0, 0, 9, 9), "first", 0, 0);
    auto* second = new BView(BRect(0, 0, 9, 9), "second", 0, 0);
    outer.AddChild(second);
    outer.AddChild(first, second);
    outer.AddChild(first);
    outer.AddChild(nullptr);
    outer.AddChild(&outer);
    first->AddChild(&outer);
    ASSERT_EQ(outer.CountChildren(), 2);
    EXPECT_EQ(outer.ChildAt(0), first);
    EXPECT_EQ(outer.ChildAt(1), second);
    EXPECT_EQ(outer.ChildAt(2), nullptr);
    EXPECT_EQ(outer.ChildAt(-1), nullptr);
    EXPECT_EQ(first->NextSibling(), second);
    EXPECT_EQ(second->NextSibling(), nullptr);
    EXPECT_EQ(outer.FindView("second"), second);
    EXPECT_EQ(outer.FindView("none"), nullptr);
    EXPECT_EQ(outer.FindView(static_cast<const char*>(nullptr)), nullptr);
}

TEST(View, ChildrenFollowTheirParentByTheirModes)
{
    struct Row {
        uint32 mode;
        BRect expected;
    };
    const Row rows[] = {
        {B_FOLLOW_NONE, BRect(10, 10, 20, 20)},
        {B_FOLLOW_LEFT | B_FOLLOW_TOP, BRect(10, 10, 20, 20)},
        {B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, BRect(60, 30, 70, 40)},
        {B_FOLLOW_LEFT_RIGHT + B_FOLLOW_TOP, BRect(10, 10, 70, 20)},
        {B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM, BRect(10, 10, 20, 40)},
        {B_FOLLOW_ALL_SIDES, BRect(10, 10, 70, 40)},
        {B_FOLLOW_H_CENTER | B_FOLLOW_V_CENTER, BRect(35, 20, 45, 30)},
    };
    for (const Row& row : rows) {
        BView outer(BRect(0, 0, 99, 99), "", 0, 0);
        auto* inner = new BView(BRect(10, 10, 20, 20), "", row.mode, 0);
        outer.AddChild(inner);
        outer.ResizeTo(149, 119);
        EXPECT_EQ(inner->Frame(), row.expected) << row.mode;
        // Smaller than its content, and back: nothing is lost.
        outer.ResizeTo(3, 3);
        outer.ResizeTo(149, 119);
        EXPECT_EQ(inner->Frame(), row.expected) << row.mode;
    }
}

TEST(View, GeometryIgnoresWhatIsNoNumber)
{
    BView view(BRect(1, 2, 11, 12), "", 0, 0);
    view.MoveTo(NAN, 3);
    view.ResizeTo(INFINITY, 3);
    EXPECT_EQ(view.Frame(), BRect(1, 2, 11, 12));
    view.ResizeTo(1e30F, -500);
    EXPECT_EQ(view.Bounds(), BRect(0, 0, 32766, -1));
    EXPECT_EQ(BView(BRect(NAN, 0, 1, 1), "", 0, 0).Frame(), BRect(0, 0, 0, 0));
}

TEST(View, FrameHooksComeOncePerTurnToThoseThatWantThem)
{
    std::string log;
    Stage stage;
    auto* wants = new Witness(BRect(0, 0, 9, 9), "a", &log, B_FOLLOW_NONE, B_FRAME_EVENTS);
    auto* not_ = new Witness(BRect(0, 0, 9, 9), "b", &log);
    stage.window->AddChild(wants);
    stage.window->AddChild(not_);
    stage.Show();
    log.clear();
    wants->MoveTo(5, 5);
    wants->MoveTo(6, 6);
    wants->ResizeTo(20, 20);
    not_->ResizeTo(20, 20);
    EXPECT_EQ(log, "");
    test::Turn();
    EXPECT_EQ(log, "a.moved a.resized ");
}

TEST(View, WidgetsHaveOnePixelMoreThanTheirRectangle)
{
    Stage stage;
    auto* outer = new BView(BRect(10, 20, 110, 50), "outer", 0, 0);
    auto* inner = new BView(BRect(1, 1, 5.4F, 5.6F), "inner", 0, 0);
    outer->AddChild(inner);
    stage.window->AddChild(outer);
    EXPECT_EQ(kits::ViewWidget(outer)->geometry(), QRect(10, 20, 101, 31));
    EXPECT_EQ(kits::ViewWidget(inner)->geometry(), QRect(1, 1, 5, 6));
    EXPECT_EQ(kits::ViewWidget(inner)->parentWidget(), kits::ViewWidget(outer));
    outer->ResizeTo(-1, 5);
    EXPECT_EQ(kits::ViewWidget(outer)->geometry(), QRect(10, 20, 0, 6));
}

TEST(View, ConvertsBetweenItselfWindowAndScreen)
{
    Stage stage(BRect(100, 200, 299, 299));
    auto* outer = new BView(BRect(10, 20, 110, 90), "outer", 0, 0);
    auto* inner = new BView(BRect(3, 4, 20, 20), "inner", 0, 0);
    outer->AddChild(inner);
    stage.window->AddChild(outer);
    EXPECT_EQ(inner->ConvertToWindow(BPoint(1, 1)), BPoint(14, 25));
    EXPECT_EQ(inner->ConvertToScreen(BPoint(1, 1)), BPoint(114, 225));
    EXPECT_EQ(inner->ConvertFromScreen(BPoint(114, 225)), BPoint(1, 1));
    EXPECT_EQ(inner->ConvertToScreen(BRect(1, 1, 2, 3)), BRect(114, 225, 115, 227));
    EXPECT_EQ(stage.window->FindView(BPoint(14, 25)), inner);
    EXPECT_EQ(stage.window->FindView(BPoint(11, 25)), outer);
    EXPECT_EQ(stage.window->FindView(BPoint(1, 1)), nullptr);
}

TEST(View, ComesBackFromItsArchive)
{
    BView view(BRect(1, 2, 30, 40), "name", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS);
    view.SetHighColor(1, 2, 3, 4);
    view.SetLowColor(make_color(5, 6, 7, 8));
    view.SetViewColor(B_TRANSPARENT_COLOR);
    view.AddChild(new BView(BRect(0, 0, 1, 1), "child", 0, 0));
    BMessage archive;
    ASSERT_EQ(view.Archive(&archive, false), B_OK);
    EXPECT_TRUE(validate_instantiation(&archive, "BView"));
    EXPECT_FALSE(archive.HasData("_views", B_MESSAGE_TYPE));
    BView copy(&archive);
    EXPECT_EQ(copy.Frame(), view.Frame());
    EXPECT_STREQ(copy.Name(), "name");
    EXPECT_EQ(copy.ResizingMode(), B_FOLLOW_ALL_SIDES);
    EXPECT_EQ(copy.Flags(), B_WILL_DRAW | B_FRAME_EVENTS);
    EXPECT_EQ(kits::ViewImpl::Of(&copy).fHigh, make_color(1, 2, 3, 4));
    EXPECT_EQ(kits::ViewImpl::Of(&copy).fLow, make_color(5, 6, 7, 8));
    EXPECT_EQ(copy.ViewColor(), B_TRANSPARENT_COLOR);
    BMessage deep;
    ASSERT_EQ(view.Archive(&deep, true), B_OK);
    EXPECT_TRUE(deep.HasData("_views", B_MESSAGE_TYPE));
    EXPECT_EQ(view.Archive(nullptr), B_BAD_VALUE);
}

TEST(View, AnArchiveOfNonsenseMakesAPlainView)
{
    const BRect frames[] = {BRect(NAN, NAN, NAN, NAN), BRect(-1e30F, 0, 1e30F, 5), BRect(0, 0, INFINITY, 3),
                            BRect(0, 0, -500, -500), BRect(0, 0, 40000, 40000)};
    for (const BRect& frame : frames) {
        BMessage archive;
        archive.AddRect("_frame", frame);
        EXPECT_EQ(BView(&archive).Frame(), BRect(0, 0, 0, 0));
    }
    BMessage wrong;
    wrong.AddString("_frame", "none");
    wrong.AddInt32("_name", 7);
    wrong.AddString("_color", "red");
    BView view(&wrong);
    EXPECT_EQ(view.Frame(), BRect(0, 0, 0, 0));
    EXPECT_STREQ(view.Name(), "");
    EXPECT_EQ(view.ViewColor(), make_color(255, 255, 255));
    EXPECT_EQ(BView(static_cast<BMessage*>(nullptr)).Frame(), BRect(0, 0, 0, 0));
}

TEST(View, NamesItselfForAssistiveTechnology)
{
    Stage stage;
    auto* view = new BView(BRect(0, 0, 9, 9), "plain name", 0, 0);
    stage.window->AddChild(view);
    EXPECT_EQ(kits::ViewWidget(view)->accessibleName(), QString("plain name"));
    view->SetAccessibleName("Load of all processors");
    EXPECT_EQ(kits::ViewWidget(view)->accessibleName(), QString("Load of all processors"));
    view->SetToolTip("more");
    EXPECT_STREQ(view->ToolTip(), "more");
    EXPECT_EQ(kits::ViewWidget(view)->toolTip(), QString("more"));
    view->SetToolTip(nullptr);
    EXPECT_EQ(kits::ViewWidget(view)->toolTip(), QString());
}

TEST(View, PreferredSizeIsThePresentOne)
{
    BView view(BRect(5, 5, 25, 15), "", 0, 0);
    float width = 0;
    float height = 0;
    view.GetPreferredSize(&width, &height);
    EXPECT_EQ(width, 20);
    EXPECT_EQ(height, 10);
    view.ResizeToPreferred();
    EXPECT_EQ(view.Frame(), BRect(5, 5, 25, 15));
}
