// SPDX-License-Identifier: MIT
#include "kits/interface/Clipboard.h"

#include "kits/interface/ListView.h"
#include "kits/support/Color.h"
#include "kits/support/TypeConstants.h"
#include "tests/kits/interface/WidgetTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>
#include <optional>

namespace {

constexpr uint32 kKept = 'KEPT';

/// Offers a number, and keeps drops.
class Sharer : public BView {
public:
    Sharer()
        : BView(BRect(10, 10, 59, 59), "", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE)
    {
    }

    bool CopyRequested(BMessage* message) override
    {
        message->what = kKept;
        return gives && message->AddInt32("number", 42) == B_OK;
    }
    bool PasteRequested(BPoint* where) override
    {
        *where = BPoint(3, 4);
        return takes;
    }
    void KeyDown(const char* bytes, int32) override { keys.push_back(*bytes); }
    void MessageReceived(BMessage* message) override
    {
        if (message->WasDropped())
            dropped.push_back(*message);
        else
            BView::MessageReceived(message);
    }

    bool gives = true;
    bool takes = true;
    std::string keys;
    std::vector<BMessage> dropped;
};

class ClipboardTest : public WidgetTest {
protected:
    ClipboardTest()
    {
        QGuiApplication::clipboard()->clear();
        fPage->AddChild(fSharer);
        fSharer->MakeFocus();
        test::Turn();
    }

    void Press(char letter)
    {
        test::Key(fWindow, letter, B_COMMAND_KEY);
        test::Turn();
    }

    /// Returns the code of the message on the clipboard.
    static std::optional<uint32> Fetched()
    {
        std::optional<uint32> what;
        const bool isThere = kits::FetchClipboard([&what](BMessage& message) { what = message.what; });
        EXPECT_EQ(isThere, what.has_value());
        return what;
    }

    static void Put(const char* format, const QByteArray& bytes)
    {
        auto data = std::make_unique<QMimeData>();
        data->setData(QString::fromLatin1(format), bytes);
        QGuiApplication::clipboard()->setMimeData(data.release());
    }

    Sharer* fSharer = new Sharer;
};

} // namespace

TEST_F(ClipboardTest, WhatIsCopiedIsDroppedWhereTheViewTakesIt)
{
    Press('c');
    Press('v');
    ASSERT_EQ(fSharer->dropped.size(), 1u);
    BMessage& message = fSharer->dropped[0];
    EXPECT_EQ(message.what, kKept);
    int32 number = 0;
    EXPECT_EQ(message.FindInt32("number", &number), B_OK);
    EXPECT_EQ(number, 42);
    EXPECT_EQ(fSharer->ConvertFromScreen(message.DropPoint()), BPoint(3, 4));
    EXPECT_EQ(fSharer->keys, "");
}

TEST_F(ClipboardTest, AViewThatHasNothingLeavesTheClipboardAndGetsTheKeys)
{
    QGuiApplication::clipboard()->setText("before");
    fSharer->gives = fSharer->takes = false;
    EXPECT_FALSE(kits::CopyFrom(fSharer));
    Press('c');
    Press('v');
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
    EXPECT_TRUE(fSharer->dropped.empty());
    EXPECT_EQ(fSharer->keys, "cv");
}

TEST_F(ClipboardTest, AViewGivesForThoseInItThatGiveNothing)
{
    auto* inner = new BView(BRect(0, 0, 9, 9), "", B_FOLLOW_NONE, B_WILL_DRAW | B_NAVIGABLE);
    fSharer->AddChild(inner);
    inner->MakeFocus();
    test::Turn();
    Press('c');
    EXPECT_EQ(Fetched(), kKept);
}

TEST_F(ClipboardTest, OfOtherProgramsItTakesTextAndColours)
{
    QGuiApplication::clipboard()->setText("from an editor");
    Press('v');
    Put("application/x-color", QByteArray("\x12\x12\x34\x34\x56\x56\xff\xff", 8));
    Press('v');
    ASSERT_EQ(fSharer->dropped.size(), 2u);
    const void* data = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(fSharer->dropped[0].FindData("text/plain", B_MIME_TYPE, &data, &size), B_OK);
    EXPECT_EQ(std::string(static_cast<const char*>(data), static_cast<size_t>(size)), "from an editor");
    EXPECT_EQ(fSharer->dropped[1].what, static_cast<uint32>(B_PASTE));
    ASSERT_EQ(fSharer->dropped[1].FindData("RGBColor", B_RGB_COLOR_TYPE, &data, &size), B_OK);
    EXPECT_EQ(*static_cast<const uint8*>(data), 0x12);
}

TEST_F(ClipboardTest, WhatIsNothingForAViewIsNotDropped)
{
    EXPECT_EQ(Fetched(), std::nullopt);
    EXPECT_FALSE(kits::PasteOnto(fSharer));
    Put("application/x-kits-message", QByteArray(100, '\x9f'));
    EXPECT_FALSE(kits::PasteOnto(fSharer));
    Put("image/png", "no picture");
    EXPECT_FALSE(kits::PasteOnto(fSharer));
    // Only shelves take archives.
    const BMessage archive(B_ARCHIVED_OBJECT);
    QByteArray bytes(static_cast<qsizetype>(archive.FlattenedSize()), '\0');
    ASSERT_EQ(archive.Flatten(bytes.data(), bytes.size()), B_OK);
    Put("application/x-kits-message", bytes);
    EXPECT_FALSE(kits::PasteOnto(fSharer));
    test::Turn();
    EXPECT_TRUE(fSharer->dropped.empty());
}

TEST_F(ClipboardTest, AListCopiesTheTextOfARowThatIsNothingMore)
{
    auto* list = new BListView(BRect(60, 10, 159, 109), "");
    list->AddItem(new BStringItem("alpha"));
    fPage->AddChild(list);
    list->MakeFocus();
    list->Select(0);
    test::Turn();
    Press('c');
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "alpha");
}
