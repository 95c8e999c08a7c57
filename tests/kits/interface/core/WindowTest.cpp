// SPDX-License-Identifier: MIT
#include "kits/interface/Window.h"

#include "kits/application/Archivable.h"
#include "kits/application/Message.h"
#include "kits/interface/View.h"
#include "kits/interface/core/ScreenList.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/core/WindowImpl.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/GuiTest.h"
#include "tests/support/TempFolder.h"

#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

#include <cmath>

namespace {

class TestWindow : public BWindow {
public:
    using BWindow::BWindow;
    explicit TestWindow(bool* gone = nullptr, BRect frame = BRect(50, 60, 349, 259))
        : BWindow(frame, "test", B_TITLED_WINDOW, 0)
        , fGone(gone)
    {
    }
    ~TestWindow() override
    {
        if (fGone != nullptr)
            *fGone = true;
    }
    void FrameResized(float width, float height) override
    {
        resized++;
        lastSize = BPoint(width, height);
    }
    void FrameMoved(BPoint) override { moved++; }
    bool QuitRequested() override
    {
        asked++;
        return agrees;
    }
    void WindowActivated(bool active) override { activated = active; }

    int resized = 0;
    int moved = 0;
    int asked = 0;
    bool agrees = true;
    bool activated = false;
    BPoint lastSize;

private:
    bool* fGone = nullptr;
};

void End(BWindow* window)
{
    window->Quit();
    test::Turn();
}

} // namespace

TEST(Window, FramesAreInclusive)
{
    auto* window = new TestWindow;
    EXPECT_EQ(window->Frame(), BRect(50, 60, 349, 259));
    EXPECT_EQ(window->Bounds(), BRect(0, 0, 299, 199));
    test::Show(window);
    EXPECT_EQ(kits::WindowWidget(window)->geometry(), QRect(50, 60, 300, 200));
    EXPECT_EQ(window->Frame(), BRect(50, 60, 349, 259));
    End(window);
}

TEST(Window, AResizeCountsAtOnceAndIsToldLater)
{
    auto* window = new TestWindow;
    auto* view = new BView(BRect(0, 0, 299, 199), "", B_FOLLOW_ALL_SIDES, 0);
    window->AddChild(view);
    test::Show(window);
    window->resized = 0;
    window->ResizeTo(399, 99);
    EXPECT_EQ(window->Frame(), BRect(50, 60, 449, 159));
    EXPECT_EQ(window->Bounds(), BRect(0, 0, 399, 99));
    EXPECT_EQ(view->Frame(), BRect(0, 0, 399, 99));
    window->ResizeTo(400, 100);
    EXPECT_EQ(window->resized, 0);
    test::Turn();
    EXPECT_EQ(window->resized, 1);
    EXPECT_EQ(window->lastSize, BPoint(400, 100));
    EXPECT_EQ(kits::WindowWidget(window)->size(), QSize(401, 101));
    window->MoveTo(10, 20);
    EXPECT_EQ(window->Frame(), BRect(10, 20, 410, 120));
    EXPECT_EQ(window->ConvertToScreen(BPoint(1, 2)), BPoint(11, 22));
    EXPECT_EQ(window->ConvertFromScreen(BPoint(11, 22)), BPoint(1, 2));
    test::Turn();
    EXPECT_EQ(window->moved, 1);
    window->ResizeTo(NAN, 5);
    window->MoveTo(BPoint(INFINITY, 5));
    EXPECT_EQ(window->Frame(), BRect(10, 20, 410, 120));
    End(window);
}

TEST(Window, TheUsersResizeIsToldToWindowAndViews)
{
    auto* window = new TestWindow;
    auto* view = new BView(BRect(0, 0, 299, 199), "", B_FOLLOW_ALL_SIDES, 0);
    window->AddChild(view);
    test::Show(window);
    ASSERT_TRUE(test::WaitFor([&] { return !kits::WindowImpl::Of(window).fTracker.IsPending(); }));
    window->resized = 0;
    kits::WindowImpl::Of(window).SizeReported(500, 400);
    EXPECT_EQ(view->Frame(), BRect(0, 0, 499, 399));
    EXPECT_EQ(window->Frame(), BRect(50, 60, 549, 459));
    test::Turn();
    EXPECT_EQ(window->resized, 1);
    End(window);
}

TEST(Window, SizesAreHeldToTheLimits)
{
    auto* window = new TestWindow;
    window->SetSizeLimits(100, 4000, 120, 4000);
    window->ResizeTo(5, 5);
    EXPECT_EQ(window->Bounds(), BRect(0, 0, 100, 120));
    window->ResizeTo(100000, 5000);
    EXPECT_EQ(window->Bounds(), BRect(0, 0, 4000, 4000));
    // The window is brought within new limits; a minimum above its maximum takes precedence.
    window->SetSizeLimits(200, 100, NAN, 300);
    EXPECT_EQ(window->Bounds(), BRect(0, 0, 200, 300));
    float least = 0;
    float most = 0;
    float lowest = 0;
    float highest = 0;
    window->GetSizeLimits(&least, &most, &lowest, &highest);
    EXPECT_EQ(least, 200);
    EXPECT_EQ(most, 200);
    EXPECT_EQ(lowest, 0);
    EXPECT_EQ(highest, 300);
    EXPECT_EQ(kits::WindowWidget(window)->maximumSize(), QSize(201, 301));
    End(window);
}

TEST(Window, ANotResizableOneHasOneSize)
{
    auto* window = new BWindow(BRect(0, 0, 99, 49), "", B_MODAL_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE);
    EXPECT_EQ(kits::WindowWidget(window)->minimumSize(), QSize(100, 50));
    EXPECT_EQ(kits::WindowWidget(window)->maximumSize(), QSize(100, 50));
    window->ResizeTo(199, 99);
    EXPECT_EQ(kits::WindowWidget(window)->minimumSize(), QSize(200, 100));
    EXPECT_EQ(kits::WindowWidget(window)->maximumSize(), QSize(200, 100));
    End(window);
}

TEST(Window, TheCloseButtonAsksAndThenItGoes)
{
    bool gone = false;
    auto* window = new TestWindow(&gone);
    window->agrees = false;
    test::Show(window);
    kits::WindowWidget(window)->close();
    test::Turn();
    EXPECT_EQ(window->asked, 1);
    EXPECT_FALSE(gone);
    EXPECT_TRUE(kits::WindowWidget(window)->isVisible());
    window->agrees = true;
    kits::WindowWidget(window)->close();
    test::Turn();
    EXPECT_TRUE(gone);
}

TEST(Window, QuittingDetachesAndDeletesItsViews)
{
    struct Child : BView {
        explicit Child(std::string* log)
            : BView(BRect(0, 0, 9, 9), "", 0, 0)
            , fLog(log)
        {
        }
        ~Child() override { *fLog += "deleted"; }
        void AllDetached() override { *fLog += Window() != nullptr ? "detached " : "windowless "; }
        std::string* fLog;
    };
    std::string log;
    bool gone = false;
    auto* window = new TestWindow(&gone);
    window->AddChild(new Child(&log));
    test::Show(window);
    window->Quit();
    test::Turn();
    EXPECT_TRUE(gone);
    EXPECT_EQ(log, "detached deleted");
    EXPECT_TRUE(kits::WindowImpl::All().empty());
}

TEST(Window, IsHiddenUntilItIsShown)
{
    auto* window = new TestWindow;
    EXPECT_TRUE(window->IsHidden());
    window->Show();
    window->Show();
    EXPECT_FALSE(window->IsHidden());
    EXPECT_TRUE(kits::WindowWidget(window)->isVisible());
    End(window);
}

TEST(Window, CanStartMinimised)
{
    auto* window = new TestWindow;
    window->Minimize(true);
    test::Show(window);
    EXPECT_TRUE(window->IsMinimized());
    EXPECT_TRUE(test::WaitFor([&] { return kits::WindowWidget(window)->isMinimized(); }));
    EXPECT_EQ(window->Frame(), BRect(50, 60, 349, 259));
    // A window manager takes its time to notice.
    EXPECT_TRUE(test::WaitFor([&] {
        window->Minimize(false);
        return !window->IsMinimized() && kits::WindowImpl::Of(window).CanShow();
    }));
    EXPECT_FALSE(kits::WindowWidget(window)->isMinimized());
    End(window);
}

TEST(Window, MaximisedItKeepsItsFrame)
{
    auto* window = new TestWindow;
    test::Show(window);
    kits::WindowWidget(window)->showMaximized();
    EXPECT_TRUE(test::WaitFor(
        [&] { return kits::WindowImpl::Of(window).fTracker.IsZoomed() && window->Bounds().Width() > 500; }));
    EXPECT_EQ(window->Frame(), BRect(50, 60, 349, 259));
    BMessage archive;
    ASSERT_EQ(window->Archive(&archive), B_OK);
    window->ResizeTo(199, 99);
    EXPECT_GT(window->Bounds().Width(), 500);
    kits::WindowWidget(window)->showNormal();
    EXPECT_TRUE(test::WaitFor([&] { return window->Bounds() == BRect(0, 0, 199, 99); }));
    EXPECT_FALSE(kits::WindowImpl::Of(window).fTracker.IsZoomed());
    End(window);

    auto* copy = new BWindow(&archive);
    EXPECT_EQ(copy->Frame(), BRect(50, 60, 349, 259));
    test::Show(copy);
    EXPECT_TRUE(
        test::WaitFor([&] { return kits::WindowImpl::Of(copy).fTracker.IsZoomed() && copy->Bounds().Width() > 500; }));
    EXPECT_TRUE(kits::WindowWidget(copy)->isMaximized());
    EXPECT_EQ(copy->Frame(), BRect(50, 60, 349, 259));
    End(copy);
}

TEST(Window, ComesBackFromItsArchive)
{
    auto* window = new BWindow(BRect(20, 30, 219, 129), "a title", B_MODAL_WINDOW_LOOK, B_FLOATING_APP_WINDOW_FEEL,
                               B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS, B_ALL_WORKSPACES);
    window->SetSizeLimits(100, 1000, 50, 500);
    window->SetPulseRate(1000000);
    window->AddChild(new BView(BRect(0, 0, 9, 9), "child", 0, 0));
    BMessage archive;
    ASSERT_EQ(window->Archive(&archive, true), B_OK);
    EXPECT_TRUE(validate_instantiation(&archive, "BWindow"));
    EXPECT_TRUE(archive.HasData("_views", B_MESSAGE_TYPE));
    EXPECT_TRUE(archive.HasData("_wspace", B_INT32_TYPE));
    BMessage shallow;
    ASSERT_EQ(window->Archive(&shallow, false), B_OK);
    EXPECT_FALSE(shallow.HasData("_views", B_MESSAGE_TYPE));
    End(window);

    auto* copy = new BWindow(&archive);
    EXPECT_EQ(copy->Frame(), BRect(20, 30, 219, 129));
    EXPECT_STREQ(copy->Title(), "a title");
    EXPECT_STREQ(copy->Name(), "a title");
    EXPECT_EQ(copy->Look(), B_MODAL_WINDOW_LOOK);
    EXPECT_EQ(copy->Feel(), B_FLOATING_APP_WINDOW_FEEL);
    EXPECT_EQ(copy->Flags(), B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS);
    EXPECT_EQ(kits::WindowImpl::Of(copy).fSettings.pulseRate, 1000000);
    copy->ResizeTo(0, 10000);
    EXPECT_EQ(copy->Bounds(), BRect(0, 0, 100, 500));
    End(copy);
}

TEST(Window, AnArchiveOfNonsenseMakesAPlainWindow)
{
    BMessage archive;
    archive.AddRect("_frame", BRect(NAN, 0, 1e30F, 3));
    archive.AddInt32("_title", 4);
    archive.AddInt32("_wlook", -7);
    archive.AddInt32("_wfeel", 1000);
    archive.AddInt32("_type", 99);
    archive.AddInt32("_flags", -1);
    archive.AddInt64("_pulse", -5);
    archive.AddString("_zoom", "sideways");
    archive.AddFloat("_limits", NAN);
    archive.AddFloat("_limits", -INFINITY);
    auto* window = new BWindow(&archive);
    EXPECT_EQ(window->Frame(), BRect(0, 0, 100, 100));
    EXPECT_STREQ(window->Title(), "");
    EXPECT_EQ(window->Look(), B_TITLED_WINDOW_LOOK);
    EXPECT_EQ(window->Feel(), B_NORMAL_WINDOW_FEEL);
    EXPECT_EQ(window->Flags(), 0U);
    EXPECT_EQ(kits::WindowImpl::Of(window).fSettings.pulseRate, 500000);
    EXPECT_FALSE(kits::WindowImpl::Of(window).fTracker.IsZoomed());
    End(window);
    auto* empty = new BWindow(static_cast<BMessage*>(nullptr));
    EXPECT_EQ(empty->Frame(), BRect(0, 0, 100, 100));
    End(empty);
}

TEST(Window, AFrameOutsideAllScreensIsPutOntoTheMainOne)
{
    const kits::ScreenList::Screen main{{0, 0, 1000, 800}, {0, 50, 1000, 800}};
    const kits::ScreenList::Screen right{{1000, 0, 2000, 800}, {1000, 0, 2000, 800}};
    using kits::ScreenList::PutOnScreen;
    EXPECT_EQ(PutOnScreen(BRect(1500, 10, 1600, 20), {main, right}), BRect(1500, 10, 1600, 20));
    EXPECT_EQ(PutOnScreen(BRect(-90, 10, 5, 20), {main, right}), BRect(-90, 10, 5, 20));
    EXPECT_EQ(PutOnScreen(BRect(1500, 10, 1599, 109), {main}), BRect(450, 375, 549, 474));
    EXPECT_EQ(PutOnScreen(BRect(5000, 10, 8000, 20), {main}), BRect(0, 419, 3000, 429));
    EXPECT_EQ(PutOnScreen(BRect(5000, 10, 8000, 20), {}), BRect(5000, 10, 8000, 20));
}

TEST(Window, PulsesTheViewsThatWantIt)
{
    struct Pulsing : BView {
        Pulsing(uint32 flags)
            : BView(BRect(0, 0, 9, 9), "", 0, flags)
        {
        }
        void Pulse() override { pulses++; }
        int pulses = 0;
    };
    auto* window = new TestWindow;
    auto* wants = new Pulsing(B_PULSE_NEEDED);
    auto* not_ = new Pulsing(0);
    window->AddChild(wants);
    window->AddChild(not_);
    window->SetPulseRate(1);
    EXPECT_EQ(kits::WindowImpl::Of(window).fSettings.pulseRate, 20000);
    window->Show();
    EXPECT_TRUE(test::WaitFor([&] { return wants->pulses >= 3; }));
    EXPECT_EQ(not_->pulses, 0);
    window->SetPulseRate(0);
    const int pulses = wants->pulses;
    test::Turn();
    EXPECT_EQ(wants->pulses, pulses);
    End(window);
}

TEST(Window, SavesWhatItShows)
{
    const TempFolder folder;
    auto* window = new TestWindow(nullptr, BRect(50, 60, 89, 79));
    auto* view = new BView(BRect(0, 0, 39, 9), "", 0, 0);
    view->SetViewColor(10, 20, 30);
    window->AddChild(view);
    // Hidden windows too.
    const std::string path = folder.Path() + "/picture.png";
    ASSERT_EQ(window->SavePicture(path.c_str()), B_OK);
    const QImage picture(QString::fromStdString(path));
    EXPECT_EQ(picture.size(), QSize(40, 20));
    EXPECT_EQ(picture.pixel(39, 9), 0xFF0A141E);
    EXPECT_NE(picture.pixel(39, 10), 0xFF0A141E);

    EXPECT_EQ(window->SavePicture((folder.Path() + "/plain").c_str()), B_OK);
    EXPECT_FALSE(QImage(QString::fromStdString(folder.Path() + "/plain"), "png").isNull());
    EXPECT_EQ(window->SavePicture(nullptr), B_BAD_VALUE);
    EXPECT_EQ(window->SavePicture(""), B_BAD_VALUE);
    EXPECT_EQ(window->SavePicture((folder.Path() + "/picture.mp3").c_str()), B_BAD_VALUE);
    EXPECT_EQ(window->SavePicture((folder.Path() + "/none/picture.png").c_str()), B_ENTRY_NOT_FOUND);
    End(window);
}

TEST(Window, KnowsItsViews)
{
    auto* window = new TestWindow;
    auto* first = new BView(BRect(0, 0, 9, 9), "first", 0, 0);
    auto* second = new BView(BRect(0, 0, 9, 9), "second", 0, 0);
    window->AddChild(second);
    window->AddChild(first, second);
    window->AddChild(first);
    EXPECT_EQ(window->CountChildren(), 2);
    EXPECT_EQ(window->ChildAt(0), first);
    EXPECT_EQ(window->ChildAt(2), nullptr);
    EXPECT_EQ(window->FindView("second"), second);
    EXPECT_EQ(window->FindView(BPoint(5, 5)), second);
    EXPECT_FALSE(window->RemoveChild(nullptr));
    EXPECT_TRUE(window->RemoveChild(second));
    EXPECT_FALSE(window->RemoveChild(second));
    EXPECT_EQ(window->FindView(BPoint(5, 5)), first);
    delete second;
    delete first;
    EXPECT_EQ(window->CountChildren(), 0);
    End(window);
}

TEST(Window, ReturnPressesTheDefaultButton)
{
    auto* window = new TestWindow;
    auto* view = new BView(BRect(0, 0, 9, 9), "", 0, B_NAVIGABLE);
    window->AddChild(view);
    test::Show(window);
    int pressed = 0;
    kits::SetDefaultButton(window, view, [&] { pressed++; });
    EXPECT_EQ(window->DefaultButton(), view);
    view->MakeFocus();
    test::Key(window, B_ENTER);
    test::Key(window, 'x');
    EXPECT_EQ(pressed, 1);
    delete view;
    EXPECT_EQ(window->DefaultButton(), nullptr);
    test::Key(window, B_ENTER);
    EXPECT_EQ(pressed, 1);
    End(window);
}

TEST(Window, AMessageThatPretendsToBeInputIsHarmless)
{
    auto* window = new TestWindow;
    auto* view = new BView(BRect(0, 0, 9, 9), "", 0, 0);
    window->AddChild(view);
    window->Show();
    for (const uint32 what : {B_MOUSE_DOWN, B_MOUSE_UP, B_MOUSE_MOVED, B_KEY_DOWN, B_WINDOW_RESIZED, B_WINDOW_MOVED}) {
        BMessage message(what);
        window->PostMessage(&message, view);
        window->PostMessage(&message);
        message.AddString("where", "here");
        message.AddString("bytes", "");
        window->PostMessage(&message, view);
    }
    test::Turn();
    EXPECT_EQ(window->Frame(), BRect(50, 60, 349, 259));
    End(window);
}
