// SPDX-License-Identifier: MIT
#include "kits/interface/Dragger.h"

#include "kits/application/Message.h"
#include "kits/interface/PopUpMenu.h"
#include "kits/interface/Shelf.h"
#include "kits/interface/core/Drag.h"
#include "kits/interface/core/ViewPrivate.h"
#include "kits/interface/platform/selections/DropMessage.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/GuiTest.h"
#include "tests/support/ReplaceValue.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

/// A view that can be dragged out.
class Target : public BView {
public:
    explicit Target(BRect frame)
        : BView(frame, "target", B_FOLLOW_NONE, B_WILL_DRAW)
    {
        SetViewColor(1, 2, 3);
    }
    void MessageReceived(BMessage* message) override { received.push_back(message->what); }

    std::vector<uint32> received;
};

/// Takes archives that have a number.
class Shelf : public BShelf {
public:
    explicit Shelf(BView* view)
        : BShelf(view)
    {
    }
    bool CanAddReplicant(const BMessage* archive) const override { return archive->HasData("number", B_INT32_TYPE); }
    bool AddReplicant(BMessage* archive, BPoint at, const std::string& named, const BMessenger& from) override
    {
        taken.push_back(*archive);
        where = at;
        identity = named;
        source = from;
        int32 number = 0;
        return archive->FindInt32("number", &number) == B_OK && number > 0;
    }

    std::vector<BMessage> taken;
    BPoint where;
    std::string identity;
    BMessenger source;
};

class Dragger : public testing::Test {
protected:
    Dragger()
        : window(new BWindow(BRect(100, 100, 299, 199), "stage", B_TITLED_WINDOW, 0))
        , target(new Target(BRect(10, 10, 109, 59)))
        , dragger(new BDragger(BRect(0, 0, 7, 7), target, B_FOLLOW_LEFT | B_FOLLOW_TOP))
    {
        target->AddChild(dragger);
        window->AddChild(target);
        test::Show(window);
        test::CatchDrags();
    }
    ~Dragger() override
    {
        kits::Drag::SetRunner(nullptr);
        window->Quit();
        test::Turn();
    }

    /// Returns the pixels of the handle as letters: one letter for each colour, in order of appearance.
    std::string Picture()
    {
        test::Turn();
        std::string letters;
        std::vector<uint32> known;
        const std::vector<uint32> words = test::PixelsOf(dragger);
        for (size_t i = 0; i < words.size(); i++) {
            size_t number = 0;
            while (number < known.size() && known[number] != words[i])
                number++;
            if (number == known.size())
                known.push_back(words[i]);
            letters += static_cast<char>('a' + number);
            letters += i % 8 == 7 ? "\n" : "";
        }
        return letters;
    }

    bool DropForeign(const BMessage& message, QPoint where)
    {
        QWindow* const top = kits::WindowWidget(window)->windowHandle();
        const std::unique_ptr<QMimeData> data = kits::DropMessage::Encode(message);
        QDragEnterEvent enter(where, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(top, &enter);
        QDragMoveEvent move(where, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(top, &move);
        if (!move.isAccepted())
            return false;
        QDropEvent drop(where, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(top, &drop);
        test::Turn();
        return drop.isAccepted();
    }

    BWindow* window;
    Target* target;
    BDragger* dragger;
};

constexpr const char* kMark = "aaaaaaaa\n"
                              "abbbbbba\n"
                              "abaaaaba\n"
                              "ababbaba\n"
                              "ababbaba\n"
                              "abaaaaba\n"
                              "abbbbbba\n"
                              "aaaaaaaa\n";

} // namespace

TEST_F(Dragger, ShowsAMarkThatCanBeToldFromEveryColour)
{
    for (const rgb_color& color : {make_color(0, 0, 0), make_color(16, 21, 29), make_color(127, 127, 127),
                                   make_color(200, 180, 90), make_color(255, 255, 255)}) {
        dragger->SetViewColor(color);
        EXPECT_EQ(Picture(), kMark);
        const uint32 back = test::PixelOf(dragger, 0, 0);
        const uint32 mark = test::PixelOf(dragger, 1, 1);
        EXPECT_EQ(back, 0xFF000000U | color.red << 16 | color.green << 8 | color.blue);
        const int difference = std::abs(static_cast<int>(back >> 8 & 0xFF) - static_cast<int>(mark >> 8 & 0xFF));
        EXPECT_GE(difference, 60);
    }
}

TEST_F(Dragger, ShowsBlackAndWhiteOverWhatShinesThrough)
{
    dragger->SetViewColor(10, 20, 30);
    Picture();
    dragger->SetViewColor(B_TRANSPARENT_COLOR);
    EXPECT_EQ(Picture(), "aaaaaaaa\n"
                         "abbbbbba\n"
                         "abccccba\n"
                         "abcbbcba\n"
                         "abcbbcba\n"
                         "abccccba\n"
                         "abbbbbba\n"
                         "aaaaaaaa\n");
    EXPECT_EQ(test::PixelOf(dragger, 0, 0), 0xFF000000U);
    EXPECT_EQ(test::PixelOf(dragger, 1, 1), 0xFFFFFFFFU);
    EXPECT_EQ(test::PixelOf(dragger, 2, 2), 0U);
}

TEST_F(Dragger, StandsOutWhileThePointerIsOnIt)
{
    dragger->SetViewColor(0, 0, 0);
    Picture();
    const uint32 before = test::PixelOf(dragger, 1, 1);
    test::MoveTo(dragger, BPoint(4, 4));
    test::Turn();
    EXPECT_EQ(test::PixelOf(dragger, 1, 1), 0xFFFFFFFFU);
    test::MoveTo(dragger, BPoint(40, 4));
    test::Turn();
    EXPECT_EQ(test::PixelOf(dragger, 1, 1), before);
}

TEST_F(Dragger, DragsTheArchiveOfItsTarget)
{
    test::Press(dragger, BPoint(3, 4));
    test::MoveTo(dragger, BPoint(5, 4));
    EXPECT_EQ(test::TakeDrag(), nullptr);
    test::MoveTo(dragger, BPoint(30, 30));
    const std::unique_ptr<test::Dragged> dragged = test::TakeDrag();
    test::Release(dragger, BPoint(30, 30));
    ASSERT_NE(dragged, nullptr);
    EXPECT_EQ(dragged->message.what, static_cast<uint32>(B_ARCHIVED_OBJECT));
    const char* name = nullptr;
    ASSERT_EQ(dragged->message.FindString("_name", &name), B_OK);
    EXPECT_STREQ(name, "target");
    EXPECT_EQ(dragged->offset, BPoint(3, 4));
    // Dragged with its picture.
    EXPECT_FALSE(dragged->rect.IsValid());
}

TEST_F(Dragger, DragsFromBelowAPointerThatHasNotMovedSinceTheLastDrag)
{
    for (int i = 0; i < 2; i++) {
        test::Press(dragger, BPoint(3, 4));
        // A fast drag: the first move is beyond the handle.
        test::MoveTo(dragger, BPoint(30, 30));
        EXPECT_NE(test::TakeDrag(), nullptr);
        test::Release(dragger, BPoint(30, 30));
    }
}

TEST_F(Dragger, EveryDragHasTheNameOfTheDraggerElseOneOfItsOwn)
{
    const auto drag = [this] {
        test::Press(dragger, BPoint(3, 4));
        test::MoveTo(dragger, BPoint(30, 30));
        const std::unique_ptr<test::Dragged> dragged = test::TakeDrag();
        test::Release(dragger, BPoint(30, 30));
        std::string name;
        EXPECT_TRUE(dragged != nullptr && dragged->message.FindString(kits::Drag::kDragField, &name) == B_OK);
        return name;
    };
    const std::string first = drag();
    EXPECT_NE(first, "");
    EXPECT_NE(first, drag());
    dragger->SetIdentity("this one");
    EXPECT_EQ(drag(), "this one");
    EXPECT_EQ(drag(), "this one");
}

TEST_F(Dragger, DragsNothingOnAClickNorWithoutTheButton)
{
    test::Click(dragger, BPoint(3, 4));
    test::MoveTo(dragger, BPoint(30, 30));
    EXPECT_EQ(test::TakeDrag(), nullptr);
    test::Press(dragger, BPoint(3, 4), B_SECONDARY_MOUSE_BUTTON);
    test::MoveTo(dragger, BPoint(30, 30));
    EXPECT_EQ(test::TakeDrag(), nullptr);
    test::Release(dragger, BPoint(30, 30));
}

TEST_F(Dragger, OpensItsMenuWithTheOtherButtons)
{
    auto menu = std::make_unique<BPopUpMenu>("menu");
    menu->AddItem(new BMenuItem("item", new BMessage(7)));
    menu->ItemAt(0)->SetTarget(target);
    BPopUpMenu* const opened = menu.get();
    dragger->SetPopUp(std::move(menu));
    test::Click(dragger, BPoint(3, 4), B_SECONDARY_MOUSE_BUTTON);
    test::Turn();
    opened->ItemAt(0)->Invoke();
    test::Turn();
    EXPECT_EQ(target->received, std::vector<uint32>{7});
}

TEST_F(Dragger, WhatItDragsIsForShelvesOnly)
{
    BMessage archive(B_ARCHIVED_OBJECT);
    archive.AddInt32("number", 1);
    archive.AddMessenger(kits::Drag::kSourceField, BMessenger(target));
    archive.AddString(kits::Drag::kDragField, "this one");
    EXPECT_FALSE(DropForeign(archive, QPoint(30, 40)));
    {
        Shelf shelf(target);
        EXPECT_TRUE(DropForeign(archive, QPoint(30, 40)));
        ASSERT_EQ(shelf.taken.size(), 1U);
        EXPECT_EQ(shelf.where, BPoint(20, 30));
        EXPECT_FALSE(shelf.taken[0].HasData(kits::Drag::kSourceField, B_MESSENGER_TYPE));
        EXPECT_FALSE(shelf.taken[0].HasData(kits::Drag::kDragField, B_STRING_TYPE));
        EXPECT_EQ(shelf.identity, "this one");
        EXPECT_EQ(shelf.source, BMessenger(target));
        EXPECT_EQ(target->received.size(), 0U) << "the shelf may have to store it first";
        // Beside the shelf's view, and archives that the shelf refuses.
        EXPECT_FALSE(DropForeign(archive, QPoint(180, 90)));
        EXPECT_FALSE(DropForeign(BMessage(B_ARCHIVED_OBJECT), QPoint(30, 40)));
        // An archive that the shelf could not use stays where it was.
        test::ReplaceInt32(archive, "number", 0);
        EXPECT_FALSE(DropForeign(archive, QPoint(30, 40)));
        EXPECT_EQ(shelf.taken.size(), 2U);
    }
    test::ReplaceInt32(archive, "number", 1);
    EXPECT_FALSE(DropForeign(archive, QPoint(30, 40)));
}
