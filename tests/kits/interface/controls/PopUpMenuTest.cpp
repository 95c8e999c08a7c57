// SPDX-License-Identifier: MIT
#include "kits/interface/PopUpMenu.h"

#include "kits/application/MainThread.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QMenu>
#include <QMouseEvent>
#include <QTimer>

#include <memory>

class PopUpMenuTest : public WidgetTest {
protected:
    PopUpMenuTest()
        : fMenu(std::make_unique<BPopUpMenu>("pop-up", false, false))
    {
        for (uint32 what = 1; what <= 3; what++) {
            auto* item = new BMenuItem(std::to_string(what).c_str(), new BMessage(what));
            item->SetTarget(fWindow);
            fMenu->AddItem(item);
        }
    }

    static QMenu* Open() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    /// Runs the action once the menu is open.
    static void WhenOpen(const std::function<void()>& action)
    {
        QTimer::singleShot(
            0, qApp,
            [action] {
                if (Open() != nullptr)
                    action();
                else
                    WhenOpen(action);
            });
    }

    static void SendMouse(QEvent::Type type, const QPoint& where, Qt::MouseButton button, Qt::MouseButtons down)
    {
        QMenu* menu = Open();
        QMouseEvent event(type, where, menu->mapToGlobal(where), button, down, Qt::NoModifier);
        QApplication::sendEvent(menu, &event);
    }

    /// Clicks the item in the topmost open menu.
    static void ClickItem(int index)
    {
        const QPoint place = Open()->actionGeometry(Open()->actions().at(index)).center();
        SendMouse(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton);
        SendMouse(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton);
    }

    std::unique_ptr<BPopUpMenu> fMenu;
};

TEST_F(PopUpMenuTest, ReturnsWhatIsClickedAndSendsNothingUnlessAskedTo)
{
    WhenOpen([] { ClickItem(1); });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), false, true), fMenu->ItemAt(1));
    EXPECT_TRUE(Heard().empty());
    WhenOpen([] { ClickItem(2); });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), fMenu->ItemAt(2));
    EXPECT_EQ(Heard(), std::vector<uint32>{3});
    EXPECT_EQ(Open(), nullptr);
}

TEST_F(PopUpMenuTest, OpensWhereItIsTold)
{
    QPoint place;
    WhenOpen([&] {
        place = Open()->pos();
        Open()->close();
    });
    fMenu->Go(BPoint(200, 150), false, true);
    EXPECT_EQ(place, QPoint(200, 150));
}

TEST_F(PopUpMenuTest, EscapeChoosesNothing)
{
    WhenOpen([] { SendKey(Open(), Qt::Key_Escape); });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), nullptr);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(PopUpMenuTest, WorksByKeyboard)
{
    WhenOpen([] {
        SendKey(Open(), Qt::Key_Down);
        SendKey(Open(), Qt::Key_Down);
        SendKey(Open(), Qt::Key_Return);
    });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), fMenu->ItemAt(1));
    EXPECT_EQ(Heard(), std::vector<uint32>{2});
}

TEST_F(PopUpMenuTest, MessagesGoOnWhileItIsOpen)
{
    std::size_t heard = 0;
    fWindow->PostMessage(9);
    WhenOpen([&] {
        ASSERT_TRUE(test::WaitFor([&] { return !fWindow->heard.empty(); }));
        heard = fWindow->heard.size();
        Open()->close();
    });
    fMenu->Go(BPoint(200, 200), false, true);
    EXPECT_EQ(heard, 1u);
}

TEST_F(PopUpMenuTest, LettingTheButtonGoElsewhereClosesTheHeldOne)
{
    test::Press(fPage, BPoint(10, 10), B_SECONDARY_MOUSE_BUTTON);
    WhenOpen([] { SendMouse(QEvent::MouseButtonRelease, QPoint(-20, -20), Qt::RightButton, Qt::NoButton); });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), false, false), nullptr);
    test::Release(fPage, BPoint(10, 10));
}

TEST_F(PopUpMenuTest, LettingItGoOverAnItemChoosesIt)
{
    for (const bool openAnyway : {false, true}) {
        test::Press(fPage, BPoint(10, 10), B_SECONDARY_MOUSE_BUTTON);
        WhenOpen([] {
            const QPoint place = Open()->actionGeometry(Open()->actions().at(0)).center();
            SendMouse(QEvent::MouseMove, place - QPoint(2, 2), Qt::NoButton, Qt::RightButton);
            SendMouse(QEvent::MouseMove, place, Qt::NoButton, Qt::RightButton);
            SendMouse(QEvent::MouseButtonRelease, place, Qt::RightButton, Qt::NoButton);
        });
        EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, openAnyway), fMenu->ItemAt(0));
        test::Release(fPage, BPoint(10, 10));
        EXPECT_EQ(Heard(), std::vector<uint32>{1});
    }
}

TEST_F(PopUpMenuTest, OpenAnywayStaysAfterTheClick)
{
    test::Press(fPage, BPoint(10, 10), B_TERTIARY_MOUSE_BUTTON);
    bool stayed = false;
    WhenOpen([&] {
        SendMouse(QEvent::MouseButtonRelease, QPoint(-20, -20), Qt::MiddleButton, Qt::NoButton);
        stayed = Open() != nullptr;
        ClickItem(1);
    });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), false, true), fMenu->ItemAt(1));
    EXPECT_TRUE(stayed);
    test::Release(fPage, BPoint(10, 10));
}

TEST_F(PopUpMenuTest, AsynchronouslyTheChoiceIsDelivered)
{
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true, true), nullptr);
    ASSERT_NE(Open(), nullptr);
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true, true), nullptr) << "open already";
    ClickItem(0);
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
    EXPECT_EQ(Open(), nullptr);
    fMenu->Go(BPoint(200, 200), false, true, true);
    ClickItem(0);
    EXPECT_TRUE(Heard().empty());
}

TEST_F(PopUpMenuTest, SubmenusOpenAndTheirItemsAreReturned)
{
    auto* submenu = new BMenu("Sources...");
    submenu->AddItem(new BMenuItem("Remove", new BMessage(4)));
    submenu->ItemAt(0)->SetTarget(fWindow);
    fMenu->AddItem(submenu);
    WhenOpen([] {
        SendKey(Open(), Qt::Key_Up);
        SendKey(Open(), Qt::Key_Right);
        SendKey(Open(), Qt::Key_Return);
    });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), submenu->ItemAt(0));
    EXPECT_EQ(Heard(), std::vector<uint32>{4});
}

TEST_F(PopUpMenuTest, AnItemWithSubmenuAndMessageCanBeChosenItself)
{
    auto* submenu = new BMenu("Chart");
    submenu->AddItem(new BMenuItem("Solid", new BMessage(4)));
    auto* item = new BMenuItem(submenu, new BMessage(5));
    item->SetTarget(fWindow);
    fMenu->AddItem(item);
    WhenOpen([] { ClickItem(3); });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), item);
    EXPECT_EQ(Heard(), std::vector<uint32>{5});
    WhenOpen([] {
        SendKey(Open(), Qt::Key_Up);
        SendKey(Open(), Qt::Key_Return);
    });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), item);
    EXPECT_EQ(Heard(), std::vector<uint32>{5});
}

TEST_F(PopUpMenuTest, ADisabledItemCannotBeChosen)
{
    fMenu->ItemAt(0)->SetEnabled(false);
    WhenOpen([] {
        ClickItem(0);
        ASSERT_NE(Open(), nullptr);
        Open()->close();
    });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), nullptr);
}

TEST_F(PopUpMenuTest, FollowsChangesWhileItIsOpen)
{
    QStringList before;
    QStringList after;
    WhenOpen([&] {
        for (const QAction* action : Open()->actions())
            before.append(action->text());
        delete fMenu->RemoveItem(static_cast<int32>(0));
        fMenu->AddItem(new BMenuItem("new", nullptr), 0);
        fMenu->ItemAt(1)->SetLabel("two");
        fMenu->ItemAt(2)->SetMarked(true);
        fMenu->ItemAt(2)->SetEnabled(false);
        for (const QAction* action : Open()->actions())
            after.append(action->text());
        EXPECT_TRUE(Open()->actions().at(2)->isChecked());
        EXPECT_FALSE(Open()->actions().at(2)->isEnabled());
        ClickItem(0);
    });
    const BMenuItem* chosen = fMenu->Go(BPoint(200, 200), false, true);
    EXPECT_EQ(chosen, fMenu->ItemAt(0));
    EXPECT_EQ(before, (QStringList{"&1", "&2", "&3"}));
    EXPECT_EQ(after, (QStringList{"&new", "&two", "&3"}));
}

TEST_F(PopUpMenuTest, InRadioModeTheDeliveredChoiceIsMarked)
{
    fMenu->SetRadioMode(true);
    fMenu->ItemAt(0)->SetMarked(true);
    WhenOpen([] { ClickItem(1); });
    fMenu->Go(BPoint(200, 200), true, true);
    EXPECT_EQ(fMenu->FindMarked(), fMenu->ItemAt(1));
    WhenOpen([] { ClickItem(2); });
    fMenu->Go(BPoint(200, 200), false, true);
    EXPECT_EQ(fMenu->FindMarked(), fMenu->ItemAt(1)) << "only returned";
}

TEST_F(PopUpMenuTest, ReturnsNothingWhenItsWindowIsQuitUnderIt)
{
    const BMessenger window(fWindow);
    WhenOpen([&] { fWindow->PostMessage(B_QUIT_REQUESTED); });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), nullptr);
    fWindow = nullptr;
    test::Turn();
    EXPECT_FALSE(window.IsValid());
    EXPECT_EQ(Open(), nullptr);
}

TEST_F(PopUpMenuTest, ReturnsNothingWhenItIsDeletedWhileOpen)
{
    WhenOpen([&] { fMenu.reset(); });
    EXPECT_EQ(fMenu->Go(BPoint(200, 200), true, true), nullptr);
    EXPECT_EQ(Open(), nullptr);
}

TEST_F(PopUpMenuTest, DeletingAnAsynchronousOneClosesIt)
{
    fMenu->Go(BPoint(200, 200), true, true, true);
    ASSERT_NE(Open(), nullptr);
    fMenu.reset();
    EXPECT_EQ(Open(), nullptr);
    test::Turn();
}

TEST_F(PopUpMenuTest, AnEmptyOneAndBadPlacesOpenNothing)
{
    BPopUpMenu empty("empty");
    EXPECT_EQ(empty.Go(BPoint(200, 200), true, true), nullptr);
    EXPECT_EQ(fMenu->Go(BPoint(std::nanf(""), 0), true, true), nullptr);
}

TEST_F(PopUpMenuTest, ManyItemsScroll)
{
    for (int i = 0; i < 500; i++)
        fMenu->AddItem(new BMenuItem(std::to_string(i).c_str(), nullptr));
    int height = 0;
    int columnsWidth = 0;
    WhenOpen([&] {
        height = Open()->height();
        columnsWidth = Open()->width();
        SendKey(Open(), Qt::Key_Up);
        SendKey(Open(), Qt::Key_Return);
    });
    EXPECT_EQ(fMenu->Go(BPoint(200, 0), false, true), fMenu->ItemAt(502)) << "the last one is reached";
    EXPECT_LE(height, QGuiApplication::primaryScreen()->geometry().height());
    EXPECT_LT(columnsWidth, 150) << "one column";
}
