// SPDX-License-Identifier: MIT
#include "kits/interface/core/Drag.h"

#include "kits/application/MainThread.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/platform/selections/DropMessage.h"
#include "kits/kernel/Bounds.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/GuiTest.h"

#include <QColor>
#include <QCoreApplication>
#include <QDropEvent>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

namespace DropMessage = kits::DropMessage;

rgb_color ColorIn(const BMessage& message)
{
    const void* data = nullptr;
    ssize_t size = 0;
    rgb_color color{};
    if (message.FindData("RGBColor", B_RGB_COLOR_TYPE, &data, &size) == B_OK && size == sizeof(color))
        std::memcpy(&color, data, sizeof(color));
    return color;
}

std::string TextIn(const BMessage& message)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (message.FindData("text/plain", B_MIME_TYPE, &data, &size) != B_OK)
        return "";
    return {static_cast<const char*>(data), static_cast<size_t>(size)};
}

BMessage ColorMessage(rgb_color color)
{
    BMessage message(B_PASTE);
    message.AddData("RGBColor", B_RGB_COLOR_TYPE, &color, sizeof(color));
    return message;
}

/// Takes drops.
class Target : public BView {
public:
    explicit Target(BRect frame)
        : BView(frame, "target", 0, 0)
    {
    }
    void MessageReceived(BMessage* message) override
    {
        received.push_back(*message);
        dropped = message->WasDropped();
        dropPoint = message->DropPoint(&dropOffset);
        hasReply = message->ReturnAddress().IsValid();
    }
    void MouseMoved(BPoint, uint32 transit, const BMessage* dragMessage) override
    {
        transits.push_back(transit);
        over = dragMessage != nullptr ? dragMessage->what : 0;
    }

    std::vector<BMessage> received;
    std::vector<uint32> transits;
    uint32 over = 0;
    bool dropped = false;
    bool hasReply = false;
    BPoint dropPoint;
    BPoint dropOffset;
};

class Drag : public testing::Test {
protected:
    Drag()
        : window(new BWindow(BRect(100, 100, 299, 199), "stage", B_TITLED_WINDOW, 0))
        , target(new Target(BRect(10, 10, 109, 59)))
    {
        window->AddChild(target);
        test::Show(window);
    }
    ~Drag() override
    {
        kits::Drag::SetRunner(nullptr);
        window->Quit();
        test::Turn();
    }
    /// The system's window, which gets the system's events.
    QWindow* Top() { return kits::WindowWidget(window)->windowHandle(); }

    /// Drags foreign data over the window and drops it there.
    bool DropForeign(const QMimeData& data, QPoint where)
    {
        QDragEnterEvent enter(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Top(), &enter);
        if (!enter.isAccepted())
            return false;
        QDragMoveEvent move(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Top(), &move);
        if (!move.isAccepted())
            return false;
        QDropEvent drop(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Top(), &drop);
        test::Turn();
        return drop.isAccepted();
    }

    BWindow* window;
    Target* target;
};

/// Offers text, which is not ready the first few times that it is asked for.
class LateText : public QMimeData {
public:
    explicit LateText(int notReady)
        : fNotReady(notReady)
    {
    }

    QStringList formats() const override { return {QStringLiteral("text/plain")}; }
    bool hasFormat(const QString& format) const override { return formats().contains(format); }
    int CountAsked() const { return fAsked; }

protected:
    QVariant retrieveData(const QString&, QMetaType) const override
    {
        return ++fAsked > fNotReady ? QVariant(QStringLiteral("late")) : QVariant();
    }

private:
    const int fNotReady;
    mutable int fAsked = 0;
};

} // namespace

TEST(DropMessage, AMessageComesThroughWhole)
{
    BMessage message(0x3F6212A5);
    message.AddInt32("number", 7);
    message.AddString("text", "words");
    const std::unique_ptr<QMimeData> data = DropMessage::Encode(message);
    EXPECT_TRUE(data->hasFormat(DropMessage::kFormat));
    EXPECT_FALSE(data->hasText());
    EXPECT_FALSE(data->hasColor());
    ASSERT_TRUE(DropMessage::CanDecode(data->formats()));
    const std::unique_ptr<BMessage> back = DropMessage::Decode(*data);
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->HasSameData(message));
}

TEST(DropMessage, ColoursAndTextsAreThereForOtherPrograms)
{
    const std::unique_ptr<QMimeData> color = DropMessage::Encode(ColorMessage(make_color(255, 128, 0, 7)));
    EXPECT_EQ(qvariant_cast<QColor>(color->colorData()), QColor(255, 128, 0));
    EXPECT_EQ(color->text(), QString("#ff8000"));

    BMessage text(B_MIME_DATA);
    text.AddData("text/plain", B_MIME_TYPE, "gr\xC3\xBC\xC3\x9F", 6, false);
    EXPECT_EQ(DropMessage::Encode(text)->text(), QString::fromUtf8("gr\xC3\xBC\xC3\x9F"));
}

TEST(DropMessage, ColoursAndTextsOfOtherProgramsBecomeMessages)
{
    QMimeData color;
    color.setColorData(QColor(1, 2, 3));
    const std::unique_ptr<BMessage> paste = DropMessage::Decode(color);
    ASSERT_NE(paste, nullptr);
    EXPECT_EQ(paste->what, static_cast<uint32>(B_PASTE));
    EXPECT_EQ(ColorIn(*paste), make_color(1, 2, 3));

    // The wire format: four numbers of 16 bits.
    const uint16 numbers[] = {0xFFFF, 0x8080, 0, 0xFFFF};
    QMimeData bytes;
    bytes.setData("application/x-color", QByteArray(reinterpret_cast<const char*>(numbers), sizeof(numbers)));
    ASSERT_NE(DropMessage::Decode(bytes), nullptr);
    EXPECT_EQ(ColorIn(*DropMessage::Decode(bytes)), make_color(255, 128, 0));

    QMimeData text;
    text.setText("some words");
    const std::unique_ptr<BMessage> words = DropMessage::Decode(text);
    ASSERT_NE(words, nullptr);
    EXPECT_EQ(words->what, static_cast<uint32>(B_MIME_DATA));
    EXPECT_EQ(TextIn(*words), "some words");
}

TEST(DropMessage, BrokenAndForeignDataAreNone)
{
    QMimeData broken;
    broken.setData(DropMessage::kFormat, QByteArray("\x9f\x01\x02 nonsense", 12));
    EXPECT_EQ(DropMessage::Decode(broken), nullptr);
    // Other formats in the same drag still count.
    broken.setText("words");
    ASSERT_NE(DropMessage::Decode(broken), nullptr);
    EXPECT_EQ(TextIn(*DropMessage::Decode(broken)), "words");

    QMimeData picture;
    picture.setData("image/png", QByteArray(10, 'x'));
    EXPECT_FALSE(DropMessage::CanDecode(picture.formats()));
    EXPECT_EQ(DropMessage::Decode(picture), nullptr);
    QMimeData empty;
    empty.setText("");
    EXPECT_EQ(DropMessage::Decode(empty), nullptr);
    QMimeData notAColor;
    notAColor.setData("application/x-color", QByteArray("no colour at all"));
    EXPECT_EQ(DropMessage::Decode(notAColor), nullptr);
    QMimeData huge;
    huge.setText(QString(static_cast<qsizetype>(kits::bounds::kMostForeignText) + 1, 'x'));
    EXPECT_EQ(DropMessage::Decode(huge), nullptr);
}

TEST_F(Drag, ASourceThatIsNotReadyAtFirstIsAskedAgain)
{
    const LateText text(1);
    EXPECT_TRUE(DropForeign(text, QPoint(30, 40)));
    EXPECT_GT(text.CountAsked(), 1);
}

TEST_F(Drag, ASourceThatIsNeverReadyIsAskedAFewTimes)
{
    const LateText text(1000000);
    QDragEnterEvent enter(QPoint(30, 40), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Top(), &enter);
    int asked = 0;
    for (int x = 0; x < 100; x++) {
        if (x == 20)
            asked = text.CountAsked();
        QDragMoveEvent move(QPoint(x, 40), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Top(), &move);
        EXPECT_FALSE(move.isAccepted());
    }
    EXPECT_EQ(text.CountAsked(), asked);
}

TEST_F(Drag, StartsFromTheLoopIfAButtonIsStillDown)
{
    test::CatchDrags();
    BMessage message(42);
    test::Press(target, BPoint(5, 6));
    target->DragMessage(&message, BRect(0, 0, 20, 10));
    // The caller may change or delete its message, since the call has returned.
    message.what = 43;
    const std::unique_ptr<test::Dragged> dragged = test::TakeDrag();
    ASSERT_NE(dragged, nullptr);
    EXPECT_EQ(dragged->message.what, 42U);
    EXPECT_EQ(dragged->rect, BRect(110, 110, 130, 120));
    EXPECT_EQ(dragged->offset, BPoint(5, 6));
    test::Release(target, BPoint(5, 6));

    target->DragMessage(&message, BRect(0, 0, 20, 10));
    EXPECT_EQ(test::TakeDrag(), nullptr);
    target->DragMessage(nullptr, BRect(0, 0, 20, 10));
    EXPECT_EQ(test::TakeDrag(), nullptr);
}

TEST_F(Drag, TakesItsPictureAndKeepsItsOffset)
{
    test::CatchDrags();
    BMessage message(42);
    test::Press(target, BPoint(5, 6));
    target->DragMessage(&message, new BBitmap(BRect(0, 0, 20, 20), B_RGB32), BPoint(-10, -10));
    const std::unique_ptr<test::Dragged> dragged = test::TakeDrag();
    ASSERT_NE(dragged, nullptr);
    EXPECT_FALSE(dragged->rect.IsValid());
    EXPECT_EQ(dragged->offset, BPoint(-10, -10));
    // Without a message, the call still takes over the picture.
    target->DragMessage(nullptr, new BBitmap(BRect(0, 0, 20, 20), B_RGB32), BPoint(-10, -10));
    EXPECT_EQ(test::TakeDrag(), nullptr);
    test::Release(target, BPoint(5, 6));
}

TEST_F(Drag, WaitsForNestedLoopsToEnd)
{
    int drags = 0;
    kits::Drag::SetRunner([&](const kits::Drag::Request&) { drags++; });
    test::Press(target, BPoint(5, 6));
    bool canceled = false;
    {
        QEventLoop loop;
        const kits::NestedLoop nested([&] {
            canceled = true;
            loop.quit();
        });
        QTimer::singleShot(0, &loop, [&] {
            BMessage message(1);
            target->DragMessage(&message, BRect(0, 0, 1, 1));
        });
        loop.exec();
        EXPECT_EQ(drags, 0);
    }
    EXPECT_TRUE(canceled);
    test::Turn();
    EXPECT_EQ(drags, 1);
    test::Release(target, BPoint(5, 6));
}

TEST_F(Drag, IsOverWhenItsViewIsGone)
{
    test::CatchDrags();
    BMessage message(42);
    test::Press(target, BPoint(5, 6));
    target->DragMessage(&message, BRect(0, 0, 20, 10));
    window->RemoveChild(target);
    delete target;
    target = nullptr;
    EXPECT_NE(test::TakeDrag(), nullptr);
}

TEST_F(Drag, ADropArrivesAtTheViewUnderThePointer)
{
    QMimeData color;
    color.setColorData(QColor(1, 2, 3));
    EXPECT_TRUE(DropForeign(color, QPoint(30, 40)));
    ASSERT_EQ(target->received.size(), 1U);
    EXPECT_EQ(target->received[0].what, static_cast<uint32>(B_PASTE));
    EXPECT_TRUE(target->dropped);
    EXPECT_EQ(target->dropPoint, BPoint(130, 140));
    EXPECT_EQ(target->ConvertFromScreen(target->dropPoint), BPoint(20, 30));
    EXPECT_FALSE(target->hasReply);
    // The target saw the drag coming.
    EXPECT_EQ(target->transits, (std::vector<uint32>{B_ENTERED_VIEW}));
    EXPECT_EQ(target->over, static_cast<uint32>(B_PASTE));
}

TEST_F(Drag, ADropBesideAllViewsIsRefused)
{
    QMimeData text;
    text.setText("words");
    EXPECT_FALSE(DropForeign(text, QPoint(180, 90)));
    QMimeData picture;
    picture.setData("image/png", QByteArray(10, 'x'));
    EXPECT_FALSE(DropForeign(picture, QPoint(30, 40)));
    EXPECT_TRUE(target->received.empty());
}

TEST_F(Drag, LeavingTheWindowLeavesTheView)
{
    QMimeData text;
    text.setText("words");
    QDragEnterEvent enter(QPoint(30, 40), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Top(), &enter);
    QDragMoveEvent move(QPoint(30, 40), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Top(), &move);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(Top(), &leave);
    EXPECT_EQ(target->transits, (std::vector<uint32>{B_ENTERED_VIEW, B_EXITED_VIEW}));
    // A drop after that finds nothing.
    QDropEvent drop(QPoint(30, 40), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Top(), &drop);
    test::Turn();
    EXPECT_TRUE(target->received.empty());
}
