// SPDX-License-Identifier: MIT
#include "kits/interface/MenuBar.h"

#include "kits/application/MainThread.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

class MenuBarTest : public WidgetTest {
protected:
    MenuBarTest()
        : fBar(new BMenuBar(BRect(0, 0, 32767, 15), "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP))
        , fFile(new BMenu("File"))
    {
        fFile->AddItem(new BMenuItem("Preferences", new BMessage(1), 'P'));
        fFile->AddSeparatorItem();
        fFile->AddItem(new BMenuItem("Quit", new BMessage(2), 'Q'));
        fBar->AddItem(fFile);
        fWindow->AddChild(fBar);
        test::Turn();
    }

    QMenuBar* Bar() const { return kits::ViewWidget(fBar)->findChild<QMenuBar*>(); }

    BMenuBar* fBar;
    BMenu* fFile;
};

TEST_F(MenuBarTest, IsAsWideAsItsWindowAndAsHighAsItsFontAsks)
{
    float height = 0;
    fBar->GetPreferredSize(nullptr, &height);
    EXPECT_EQ(fBar->Frame(), BRect(0, 0, fWindow->Bounds().right, height));
    EXPECT_GT(height, 12);
    EXPECT_LT(height, 60);
    fWindow->ResizeTo(500, 300);
    EXPECT_EQ(fBar->Bounds().Width(), 500);
}

TEST_F(MenuBarTest, ItsMenusOpenAndSendToTheWindow)
{
    ASSERT_EQ(Bar()->actions().size(), 1);
    QMenu* menu = Bar()->actions().at(0)->menu();
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_TRUE(menu->actions().at(1)->isSeparator());
    menu->actions().at(0)->trigger();
    EXPECT_EQ(Heard(), std::vector<uint32>{1});
}

TEST_F(MenuBarTest, ShortcutsWorkInTheWholeWindow)
{
    fPage->MakeFocus();
    const QMenu* menu = Bar()->actions().at(0)->menu();
    EXPECT_EQ(menu->actions().at(0)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_P));
    EXPECT_EQ(menu->actions().at(2)->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST_F(MenuBarTest, F10OpensTheFirstMenu)
{
    const auto shortcuts = Bar()->findChildren<QShortcut*>();
    ASSERT_EQ(shortcuts.size(), 1);
    EXPECT_EQ(shortcuts.at(0)->key(), QKeySequence(Qt::Key_F10));
    emit shortcuts.at(0)->activated();
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    SendKey(menu, Qt::Key_Escape);
}

TEST_F(MenuBarTest, FollowsChangesOfItsMenus)
{
    fFile->ItemAt(2)->SetEnabled(false);
    EXPECT_FALSE(Bar()->actions().at(0)->menu()->actions().at(2)->isEnabled());
    auto* help = new BMenu("Help");
    fBar->AddItem(help);
    help->AddItem(new BMenuItem("About", new BMessage(3)));
    ASSERT_EQ(Bar()->actions().size(), 2);
    Bar()->actions().at(1)->menu()->actions().at(0)->trigger();
    EXPECT_EQ(Heard(), std::vector<uint32>{3});
    delete fBar->RemoveItem(1);
    EXPECT_EQ(Bar()->actions().size(), 1);
}

TEST_F(MenuBarTest, AnItemAddedOnAnotherThreadShowsLater)
{
    OnOtherThread([&] { fFile->AddItem(new BMenuItem("More", nullptr)); });
    EXPECT_EQ(fFile->CountItems(), 4);
    EXPECT_TRUE(test::WaitFor([&] { return Bar()->actions().at(0)->menu()->actions().size() == 4; }));
}

TEST_F(MenuBarTest, AnItemThatGoesOnAnotherThreadIsNotTouchedAgain)
{
    QAction* action = Bar()->actions().at(0)->menu()->actions().at(0);
    // The screen follows when the main thread gets to it.
    std::thread other([&] { delete fFile->RemoveItem(static_cast<int32>(0)); });
    other.join();
    action->trigger();
    EXPECT_TRUE(Heard().empty());
    EXPECT_EQ(Bar()->actions().at(0)->menu()->actions().size(), 2);
}
