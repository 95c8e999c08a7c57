// SPDX-License-Identifier: MIT
#include "src/support/ui/ColorPreView.h"

#include "kits/application/AppDefs.h"
#include "kits/interface/Screen.h"
#include "kits/support/TypeConstants.h"
#include "src/chart/PixelRows.h"
#include "src/support/MessageCodes.h"
#include "src/support/ui/SmartColorControl.h"
#include "tests/support/GuiTest.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

namespace {

/// Plays a page: receives the messages of its controls.
class Listener : public BView {
public:
    Listener()
        : BView(BRect(0, 0, 400, 200), "page", B_FOLLOW_NONE, B_WILL_DRAW)
    {
    }
    void MessageReceived(BMessage* message) override
    {
        if (!message->WasDropped())
            codes.push_back(message->what);
    }

    std::vector<uint32> codes;
};

/// Runs the action once a menu is open.
void WhenOpen(const std::function<void(QMenu*)>& action)
{
    QTimer::singleShot(
        0, qApp,
        [action] {
            if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
                action(menu);
            else
                WhenOpen(action);
        });
}

void ClickItem(QMenu* menu, int index)
{
    const QPoint place = menu->actionGeometry(menu->actions().at(index)).center();
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, menu->mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(menu, &event);
    }
}

class ColorPreViewTest : public testing::Test {
protected:
    ColorPreViewTest()
        : fWindow(new BWindow(BRect(100, 100, 500, 300), "colors", B_TITLED_WINDOW, 0))
        , fPage(new Listener)
        , fControl(new SmartColorControl(BPoint(10, 20), 8, new BMessage(MSG_COLOR_CHANGED)))
        , fSwatch(new ColorPreView(BRect(350, 10, 390, 50), fControl))
    {
        fPage->AddChild(fControl);
        fPage->AddChild(fSwatch);
        fWindow->AddChild(fPage);
        fSwatch->SetViewColor(kColor);
        fWindow->Show();
        test::CatchDrags();
        test::Turn();
    }
    ~ColorPreViewTest() override
    {
        test::Release(fPage, BPoint(0, 0));
        fWindow->Quit();
        test::Turn();
    }

    static BMessage ColorMessage(rgb_color color, size_t size = sizeof(rgb_color))
    {
        BMessage message(B_PASTE);
        message.AddData("RGBColor", B_RGB_COLOR_TYPE, &color, static_cast<ssize_t>(size), true, 1);
        return message;
    }

    static constexpr rgb_color kColor{11, 22, 33, 255};

    BWindow* fWindow;
    Listener* fPage;
    SmartColorControl* fControl;
    ColorPreView* fSwatch;
};

} // namespace

TEST_F(ColorPreViewTest, TheControlIsAsTheProgramWantsIt)
{
    EXPECT_EQ(fControl->Layout(), B_CELLS_32x8);
    EXPECT_EQ(fControl->CellSize(), 8);
    EXPECT_STREQ(fControl->Name(), "");
    EXPECT_EQ(fControl->ResizingMode(), uint32(B_FOLLOW_NONE));
    EXPECT_TRUE((fControl->Flags() & B_NAVIGABLE) != 0);
    EXPECT_TRUE((fControl->Flags() & B_NAVIGABLE_JUMP) != 0);
    EXPECT_EQ(fControl->Frame().LeftTop(), BPoint(10, 20));
    float width = 0;
    float height = 0;
    fControl->GetPreferredSize(&width, &height);
    EXPECT_EQ(fControl->Bounds().Width(), width);
    EXPECT_EQ(fControl->Bounds().Height(), height);
    EXPECT_EQ(fControl->Message()->what, uint32(MSG_COLOR_CHANGED));
}

TEST_F(ColorPreViewTest, ShowsItsColor)
{
    EXPECT_EQ(fSwatch->ViewColor(), kColor);
    EXPECT_EQ(test::PixelOf(fWindow, 370, 30) & 0xFFFFFF, 0x0B1621u);
    EXPECT_EQ(fSwatch->Border(), B_PLAIN_BORDER);
}

TEST_F(ColorPreViewTest, APressOfThePrimaryButtonDragsTheColorAtOnce)
{
    test::Press(fSwatch, BPoint(20, 20));
    const auto drag = test::TakeDrag();
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->message.what, 0x50535445u);
    EXPECT_EQ(drag->message.CountNames(B_ANY_TYPE), 1);
    const void* data = nullptr;
    ssize_t size = 0;
    ASSERT_EQ(drag->message.FindData("RGBColor", 0x52474243, &data, &size), B_OK);
    ASSERT_EQ(size, 4);
    EXPECT_EQ(std::memcmp(data, &kColor, 4), 0);
    EXPECT_EQ(drag->offset, BPoint(-10, -10));
    EXPECT_FALSE(drag->rect.IsValid());
}

TEST_F(ColorPreViewTest, TheOtherButtonsOfferTheColorOfTheDesktop)
{
    constexpr rgb_color kDesktop{77, 88, 99, 255};
    BScreen().SetDesktopColor(kDesktop);
    for (uint32 button : {B_SECONDARY_MOUSE_BUTTON, B_TERTIARY_MOUSE_BUTTON}) {
        fControl->SetValue(0);
        fPage->codes.clear();
        WhenOpen([](QMenu* menu) {
            ASSERT_EQ(menu->actions().size(), 1);
            EXPECT_EQ(menu->actions().at(0)->text().remove(u'&'), "Pick desktop color");
            ClickItem(menu, 0);
        });
        test::Click(fSwatch, BPoint(20, 20), button);
        EXPECT_EQ(test::TakeDrag(), nullptr);
        EXPECT_EQ(fControl->ValueAsColor(), kDesktop);
        EXPECT_EQ(fPage->codes, std::vector<uint32>{MSG_COLOR_CHANGED});
    }
}

TEST_F(ColorPreViewTest, SoDoesTheMenuKey)
{
    BScreen().SetDesktopColor({7, 8, 9, 255});
    WhenOpen([](QMenu* menu) { ClickItem(menu, 0); });
    fSwatch->ContextMenuRequested(BPoint(20, 20));
    test::Turn();
    EXPECT_EQ(fControl->ValueAsColor(), (rgb_color{7, 8, 9, 255}));
}

TEST_F(ColorPreViewTest, ClosingTheMenuChangesNothing)
{
    WhenOpen([](QMenu* menu) { menu->close(); });
    test::Click(fSwatch, BPoint(20, 20), B_SECONDARY_MOUSE_BUTTON);
    test::Turn();
    EXPECT_EQ(fControl->Value(), 0);
    EXPECT_TRUE(fPage->codes.empty());
}

TEST_F(ColorPreViewTest, TakesAColorThatIsDroppedOnIt)
{
    constexpr rgb_color kDropped{1, 200, 3, 255};
    test::Drop(fSwatch, ColorMessage(kDropped), BPoint(5, 5));
    EXPECT_EQ(fControl->ValueAsColor(), kDropped);
    ASSERT_EQ(fPage->codes.size(), 1u);
    EXPECT_EQ(fPage->codes[0], uint32(MSG_COLOR_CHANGED));
}

TEST_F(ColorPreViewTest, TakesNothingElse)
{
    test::Drop(fSwatch, ColorMessage({1, 2, 3, 255}, 3), BPoint(5, 5));
    test::Drop(fSwatch, BMessage(B_PASTE), BPoint(5, 5));
    // Not dropped, but sent by somebody.
    const BMessage sent = ColorMessage({1, 2, 3, 255});
    fWindow->PostMessage(&sent, fSwatch);
    test::Turn();
    EXPECT_EQ(fControl->Value(), 0);
    for (uint32 code : fPage->codes)
        EXPECT_NE(code, uint32(MSG_COLOR_CHANGED));
}

TEST_F(ColorPreViewTest, ByKeyboardItGivesAndTakesColours)
{
    fControl->SetValue(kColor);
    for (BView* view : std::initializer_list<BView*>{fSwatch, fControl}) {
        BMessage message;
        ASSERT_TRUE(view->CopyRequested(&message));
        EXPECT_TRUE(message.HasSameData(ColorMessage(kColor)));
    }
    fWindow->Activate();
    fSwatch->MakeFocus();
    test::Turn();
    EXPECT_TRUE(fSwatch->IsFocus());
    // It shows where the keyboard focus is.
    EXPECT_EQ(test::PixelOf(fSwatch, 1, 20) & 0xFFFFFF, PixelWord(ui_color(B_KEYBOARD_NAVIGATION_COLOR)) & 0xFFFFFF);
    test::Key(fWindow, 'c', B_COMMAND_KEY);
    fControl->SetValue(rgb_color{1, 2, 3, 255});
    test::Key(fWindow, 'v', B_COMMAND_KEY);
    test::Turn();
    EXPECT_EQ(fControl->ValueAsColor(), make_color(11, 22, 33));
    EXPECT_EQ(fPage->codes, std::vector<uint32>{MSG_COLOR_CHANGED});
}
