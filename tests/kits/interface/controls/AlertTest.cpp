// SPDX-License-Identifier: MIT
#include "kits/interface/Alert.h"

#include "kits/application/Invoker.h"
#include "kits/application/MainThread.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>

#include <memory>

namespace {

constexpr const char* kLongText =
    "Qel:\n\nThe version of the saved preferences is older then the executable ! You may try to load it or use the "
    "defaults (but then the old settings will be overwritten at exit !)\n(Loading the old prefs should not cause any "
    "harm, but if you get empty charts or similar I recommend loading the defaults !)";

BAlert* Question()
{
    return new BAlert("Qel", kLongText, "Quit", "Use defaults", "Load", B_WIDTH_FROM_LABEL, B_OFFSET_SPACING,
                      B_STOP_ALERT);
}

QWidget* Top()
{
    return QApplication::activeModalWidget();
}

QList<QPushButton*> Buttons()
{
    return Top()->findChildren<QPushButton*>();
}

void WhenOpen(const std::function<void()>& action)
{
    QTimer::singleShot(
        0, qApp,
        [action] {
            if (Top() != nullptr)
                action();
            else
                WhenOpen(action);
        });
}

} // namespace

TEST(AlertTest, ReturnsTheIndexOfThePressedButtonWithNoOtherWindow)
{
    for (int index = 0; index < 3; index++) {
        WhenOpen([index] { Buttons().at(index)->click(); });
        EXPECT_EQ(Question()->Go(), index);
        test::Turn();
        EXPECT_EQ(Top(), nullptr);
    }
}

TEST(AlertTest, ButtonsStandByIndexAndTheLastHasTheFocus)
{
    WhenOpen([] {
        ASSERT_EQ(Buttons().size(), 3);
        EXPECT_EQ(Buttons().at(0)->text(), QLatin1String("Quit"));
        EXPECT_EQ(Buttons().at(2)->text(), QLatin1String("Load"));
        EXPECT_LT(Buttons().at(0)->x(), Buttons().at(1)->x());
        EXPECT_LT(Buttons().at(1)->x(), Buttons().at(2)->x());
        const int offset = Buttons().at(1)->x() - Buttons().at(0)->geometry().right();
        const int gap = Buttons().at(2)->x() - Buttons().at(1)->geometry().right();
        EXPECT_GT(offset, gap + 20);
        EXPECT_EQ(Top()->focusWidget(), Buttons().at(2));
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(Buttons().at(2), &key);
    });
    EXPECT_EQ(Question()->Go(), 2);
}

TEST(AlertTest, WidthsOfButtonsAreAsAsked)
{
    WhenOpen([] {
        EXPECT_LT(Buttons().at(0)->width(), Buttons().at(1)->width());
        Buttons().at(0)->click();
    });
    (new BAlert("a", "b", "x", "a much longer label", nullptr, B_WIDTH_FROM_LABEL))->Go();
}

TEST(AlertTest, TheTextIsShownAsItIsAndWrapped)
{
    WhenOpen([] {
        QLabel* text = nullptr;
        for (QLabel* label : Top()->findChildren<QLabel*>())
            if (!label->text().isEmpty())
                text = label;
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text->text().toStdString(), kLongText);
        EXPECT_EQ(text->textFormat(), Qt::PlainText);
        EXPECT_LT(Top()->width(), QGuiApplication::primaryScreen()->geometry().width());
        EXPECT_GE(text->height(), text->heightForWidth(text->width())) << "nothing is cut off";
        EXPECT_EQ(Top()->windowTitle(), QLatin1String("Qel"));
        Buttons().at(0)->click();
    });
    Question()->Go();
}

TEST(AlertTest, ClosingItAnswersWithTheFirstButton)
{
    WhenOpen([] { Top()->close(); });
    EXPECT_EQ(Question()->Go(), 0);
    test::Turn();
    EXPECT_EQ(Top(), nullptr);
}

TEST(AlertTest, EscapePressesTheOnlyButton)
{
    WhenOpen([] {
        const QList<QShortcut*> shortcuts = Top()->findChildren<QShortcut*>();
        ASSERT_EQ(shortcuts.size(), 1);
        EXPECT_EQ(shortcuts[0]->key(), QKeySequence(Qt::Key_Escape));
        emit shortcuts[0]->activated();
    });
    EXPECT_EQ((new BAlert("a", "b", "OK"))->Go(), 0);
    WhenOpen([] {
        EXPECT_TRUE(Top()->findChildren<QShortcut*>().isEmpty()) << "none of several buttons";
        Buttons().at(1)->click();
    });
    EXPECT_EQ(Question()->Go(), 1);
}

TEST(AlertTest, ReturnsTheFirstIndexWhenItIsCutShort)
{
    auto* below = new ListeningWindow(BRect(0, 0, 100, 100));
    below->Show();
    WhenOpen([below] { below->PostMessage(B_QUIT_REQUESTED); });
    EXPECT_EQ(Question()->Go(), 0);
    test::Turn();
    EXPECT_EQ(Top(), nullptr);
}

TEST(AlertTest, OneAfterTheOtherIsAskedInAnyPlace)
{
    std::vector<int32> answers;
    auto ask = [&] {
        WhenOpen([] { Top()->close(); });
        answers.push_back(Question()->Go());
        WhenOpen([] { Buttons().at(1)->click(); });
        answers.push_back(Question()->Go());
        WhenOpen([] { Buttons().at(2)->click(); });
        answers.push_back(Question()->Go());
    };
    ask();
    EXPECT_EQ(answers, (std::vector<int32>{0, 1, 2}));
    answers.clear();
    kits::RunOnMainThread(ask);
    EXPECT_TRUE(test::WaitFor([&] { return answers.size() == 3; }));
    EXPECT_EQ(answers, (std::vector<int32>{0, 1, 2}));
    test::Turn();
    EXPECT_EQ(Top(), nullptr);
}

TEST(AlertTest, KeepsWhatItWasGiven)
{
    WhenOpen([] { Buttons().at(0)->click(); });
    auto* alert = new BAlert("a", "b", nullptr, "", nullptr);
    EXPECT_EQ(alert->CountButtons(), 1) << "there is always one";
    EXPECT_STREQ(alert->Text(), "b");
    EXPECT_EQ(alert->Type(), B_INFO_ALERT);
    EXPECT_EQ(alert->Go(), 0);
}

class AsynchronousAlertTest : public WidgetTest {};

TEST_F(AsynchronousAlertTest, SendsTheAnswerAndGoes)
{
    BAlert* alert = Question();
    const BMessenger messenger(alert);
    EXPECT_EQ(alert->Go(new BInvoker(new BMessage(7), fWindow)), B_OK);
    ASSERT_TRUE(test::WaitFor([] { return Top() != nullptr; }));
    Buttons().at(1)->click();
    test::Turn();
    ASSERT_EQ(fWindow->heard.size(), 1u);
    int32 which = -1;
    EXPECT_EQ(fWindow->heard[0].FindInt32("which", &which), B_OK);
    EXPECT_EQ(which, 1);
    EXPECT_FALSE(messenger.IsValid());
    EXPECT_EQ(Top(), nullptr);
}

TEST_F(AsynchronousAlertTest, ClosedItAnswersToo)
{
    Question()->Go(new BInvoker(new BMessage(7), fWindow));
    ASSERT_TRUE(test::WaitFor([] { return Top() != nullptr; }));
    Top()->close();
    test::Turn();
    ASSERT_EQ(fWindow->heard.size(), 1u);
    int32 which = -1;
    EXPECT_EQ(fWindow->heard[0].FindInt32("which", &which), B_OK);
    EXPECT_EQ(which, 0);
}

TEST_F(AsynchronousAlertTest, NeedNotTellAnybody)
{
    BAlert* alert = Question();
    const BMessenger messenger(alert);
    alert->Go(nullptr);
    ASSERT_TRUE(test::WaitFor([] { return Top() != nullptr; }));
    Buttons().at(2)->click();
    test::Turn();
    EXPECT_FALSE(messenger.IsValid());
}
