// SPDX-License-Identifier: MIT
#include "kits/application/Application.h"
#include "kits/interface/Button.h"
#include "kits/storage/Entry.h"
#include "kits/storage/Node.h"
#include "kits/support/TypeConstants.h"
#include "src/app/AboutFiles.h"
#include "src/app/AboutWindow.h"
#include "src/support/Qel.h"
#include "tests/src/app/AppTest.h"

#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

std::string Attribute(const std::string& path, const char* name, type_code type)
{
    char value[256] = {};
    const BEntry entry(path.c_str());
    const ssize_t size = BNode(&entry).ReadAttr(name, type, 0, value, sizeof(value));
    return size > 0 ? std::string(value, static_cast<size_t>(size)) : "";
}

/// The high (0) or the low colour (1) that a view draws with.
rgb_color ColorOf(const BView& view, int32 which)
{
    BMessage archive;
    int32 word = 0;
    EXPECT_EQ(view.Archive(&archive, false), B_OK);
    EXPECT_EQ(archive.FindInt32("_color", &word, which), B_OK);
    const auto bits = static_cast<uint32>(word);
    return make_color(static_cast<uint8>(bits >> 16), static_cast<uint8>(bits >> 8), static_cast<uint8>(bits));
}

std::string WithZero(const std::string& text)
{
    return text + '\0';
}

constexpr const char* kSubject = "Just reply to this fake e-mail to reach the author of Qel...";

class AboutWindowTest : public AppTest {
protected:
    void Open()
    {
        Make();
        fWindow = new AboutWindow(AboutWindow::FrameOn(BRect(0, 0, 1279, 799)), &fWindow);
        fView = dynamic_cast<AboutView*>(fWindow->ChildAt(0));
        ASSERT_NE(fView, nullptr);
    }
    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock())
            fWindow->Quit();
        AppTest::TearDown();
    }

    AboutWindow* fWindow = nullptr;
    AboutView* fView = nullptr;
};

} // namespace

TEST(AboutFiles, WriteAMailFromTheMaker)
{
    const TempFolder folder;
    const std::string path = folder.Path("mail");
    entry_ref ref;
    ASSERT_EQ(WriteMailFile(path.c_str(), &ref), B_OK);
    EXPECT_EQ(ref.name, "mail");
    const std::string from = "\"" + std::string(kMakerName) + "\" <" + kMakerAddress + ">";
    EXPECT_EQ(Attribute(path, "MAIL:from", B_STRING_TYPE), WithZero(from));
    EXPECT_EQ(Attribute(path, "MAIL:subject", B_STRING_TYPE), WithZero(kSubject));
    EXPECT_EQ(Attribute(path, "BEOS:TYPE", B_MIME_STRING_TYPE), WithZero("text/x-email"));
    const std::string body = folder.Get("mail");
    EXPECT_EQ(body.find("Subject: " + std::string(kSubject) + "\n\rFrom: " + from + "\n\r"), 0u);
}

TEST(AboutFiles, CutAnOlderAndLongerMail)
{
    const TempFolder folder;
    entry_ref ref;
    ASSERT_EQ(WriteMailFile(folder.Path("mail").c_str(), &ref), B_OK);
    const std::string body = folder.Get("mail");
    folder.Put("mail", body + std::string(1000, 'x'));
    ASSERT_EQ(WriteMailFile(folder.Path("mail").c_str(), &ref), B_OK);
    EXPECT_EQ(folder.Get("mail"), body);
}

TEST(AboutFiles, WriteABookmark)
{
    const TempFolder folder;
    const std::string path = folder.Path("bookmark");
    entry_ref ref;
    ASSERT_EQ(WriteBookmarkFile(path.c_str(), &ref), B_OK);
    EXPECT_EQ(Attribute(path, "META:url", B_STRING_TYPE), WithZero(kMakerHome));
    EXPECT_EQ(Attribute(path, "META:title", B_STRING_TYPE), WithZero("Qel Home Page"));
    EXPECT_EQ(Attribute(path, "BEOS:TYPE", B_MIME_STRING_TYPE), WithZero("application/x-vnd.Be-bookmark"));
    EXPECT_EQ(folder.Get("bookmark"), "");
}

TEST(AboutFiles, AreNotWrittenThroughLinks)
{
    const TempFolder folder;
    folder.Put("precious", "kept");
    std::filesystem::create_symlink(folder.Path("precious"), folder.Path("mail"));
    std::filesystem::create_hard_link(folder.Path("precious"), folder.Path("bookmark"));
    entry_ref ref;
    EXPECT_NE(WriteMailFile(folder.Path("mail").c_str(), &ref), B_OK);
    EXPECT_NE(WriteBookmarkFile(folder.Path("bookmark").c_str(), &ref), B_OK);
    EXPECT_EQ(folder.Get("precious"), "kept");
    EXPECT_NE(WriteMailFile(folder.Path("no/mail").c_str(), &ref), B_OK);
}

TEST(AboutWindow, StandsInTheUpperMiddleOfTheScreen)
{
    EXPECT_EQ(AboutWindow::FrameOn(BRect(0, 0, 1279, 799)), BRect(440, 157, 840, 377));
    EXPECT_EQ(AboutWindow::FrameOn(BRect(0, 0, 1920, 1080)), BRect(760, 250, 1160, 470));
}

TEST_F(AboutWindowTest, ClearsItsOwnersPointer)
{
    Open();
    AboutWindow* const window = fWindow;
    EXPECT_TRUE(window->QuitRequested());
    EXPECT_EQ(fWindow, nullptr);
    ASSERT_TRUE(window->Lock());
    window->Quit();
}

TEST_F(AboutWindowTest, HasItsLookAndItsButton)
{
    Open();
    EXPECT_STREQ(fWindow->Title(), "About Qel");
    EXPECT_EQ(fWindow->Look(), B_MODAL_WINDOW_LOOK);
    EXPECT_EQ(fWindow->Feel(), B_NORMAL_WINDOW_FEEL);
    EXPECT_EQ(fWindow->Flags() & B_NOT_RESIZABLE, B_NOT_RESIZABLE);
    EXPECT_EQ(fView->Frame(), BRect(0, 0, 400, 220));
    EXPECT_EQ(ColorOf(*fView, 0), (rgb_color{0, 100, 240, 255}));
    EXPECT_EQ(ColorOf(*fView, 1), (rgb_color{65, 140, 215, 255}));
    const auto* button = dynamic_cast<BButton*>(fView->ChildAt(0));
    ASSERT_NE(button, nullptr);
    EXPECT_STREQ(button->Label(), "Allright");
    EXPECT_EQ(button->Command(), B_QUIT_REQUESTED);
    EXPECT_EQ(button->Messenger().Target(nullptr), fWindow);
    EXPECT_EQ(button->ViewColor(), (rgb_color{200, 200, 200, 255}));
    EXPECT_EQ(button->Frame().right, 400 - 20);
    EXPECT_EQ(button->Frame().bottom, 220 - 11);
}

TEST_F(AboutWindowTest, KnowsWhereItDrewItsLines)
{
    Open();
    EXPECT_FALSE(fView->MailRect().IsValid());
    EXPECT_FALSE(fView->HomeRect().IsValid());
    fWindow->Show();
    fView->Draw(fView->Bounds());
    const BRect mail = fView->MailRect();
    const BRect home = fView->HomeRect();
    ASSERT_TRUE(mail.IsValid());
    ASSERT_TRUE(home.IsValid());
    EXPECT_GT(home.top, mail.bottom);
    EXPECT_TRUE(fView->Bounds().Contains(mail));
    EXPECT_TRUE(fView->Bounds().Contains(home));
    EXPECT_FALSE(fView->ChildAt(0)->Frame().Intersects(home));
    EXPECT_EQ(ColorOf(*fView, 0), (rgb_color{0, 100, 240, 255})) << "drawing leaves the colours as they were";
}

TEST_F(AboutWindowTest, AButtonInALargeFontCoversNoLine)
{
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSize(20);
    QApplication::setFont(large);
    Open();
    fWindow->Show();
    fView->Draw(fView->Bounds());
    EXPECT_GT(fView->ChildAt(0)->Frame().Height(), 30);
    EXPECT_GT(fView->ChildAt(0)->Frame().top, fView->HomeRect().bottom);
    EXPECT_GT(fView->HomeRect().top, fView->MailRect().bottom);
    QApplication::setFont(before);
}
