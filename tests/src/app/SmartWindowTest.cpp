// SPDX-License-Identifier: MIT
#include "src/support/ui/SmartWindow.h"

#include "kits/application/Message.h"
#include "kits/interface/View.h"
#include "kits/support/TypeConstants.h"
#include "src/support/MessageCodes.h"
#include "tests/src/app/AppTest.h"
#include "tests/support/GuiTest.h"

#include <gtest/gtest.h>

namespace {

constexpr BRect kFrame(30, 40, 230, 140);

/// Keeps the messages that closing windows send.
class Keeper : public BHandler {
public:
    void MessageReceived(BMessage* message) override
    {
        fLast = *message;
        ++fCount;
    }

    BMessage fLast;
    int fCount = 0;
};

class KeeperLooper : public BLooper {
public:
    KeeperLooper() { AddHandler(&fKeeper); }
    Keeper fKeeper;
};

std::vector<std::string> Classes(const BMessage& archive)
{
    std::vector<std::string> classes;
    const char* name = nullptr;
    for (int32 i = 0; archive.FindString("class", &name, i) == B_OK; ++i)
        classes.emplace_back(name);
    return classes;
}

class SmartWindowTest : public AppTest {
protected:
    void Destroy(SmartWindow* window)
    {
        ASSERT_TRUE(window->Lock());
        window->Quit();
    }
};

} // namespace

TEST_F(SmartWindowTest, ClearsTheOwnersPointer)
{
    Make();
    SmartWindow* slot = nullptr;
    slot = new SmartWindow(kFrame, "A window", nullptr, &slot, 0);
    Destroy(slot);
    EXPECT_EQ(slot, nullptr);
}

TEST_F(SmartWindowTest, NeedsNoOwner)
{
    Make();
    auto* window = new SmartWindow(kFrame, "A window", nullptr, nullptr, 0);
    EXPECT_TRUE(window->QuitRequested());
    Destroy(window);
}

TEST_F(SmartWindowTest, ArchivesItselfWithoutTheWorkspace)
{
    Make();
    auto* window = new SmartWindow(kFrame, "A window", nullptr, nullptr, 0);
    BMessage archive;
    ASSERT_EQ(window->Archive(&archive, false), B_OK);
    EXPECT_FALSE(archive.HasData("_wspace", B_ANY_TYPE));
    ASSERT_GE(Classes(archive).size(), 2u);
    EXPECT_EQ(Classes(archive).back(), "SmartWindow");
    int32 flags = -1;
    EXPECT_EQ(archive.FindInt32("sw:flags", &flags), B_OK);
    EXPECT_EQ(flags, 0);
    Destroy(window);
}

TEST_F(SmartWindowTest, ComesBackFromItsArchive)
{
    Make();
    auto* window = new SmartWindow(kFrame, "A window", nullptr, nullptr, 4);
    BMessage archive;
    window->Archive(&archive, false);
    Destroy(window);

    SmartWindow* slot = nullptr;
    slot = new SmartWindow(&archive, "Heute", nullptr, &slot);
    EXPECT_EQ(slot->Frame(), kFrame);
    EXPECT_STREQ(slot->Title(), "Heute");
    BMessage again;
    slot->Archive(&again, false);
    int32 flags = 0;
    again.FindInt32("sw:flags", &flags);
    EXPECT_EQ(flags, 4);
    Destroy(slot);
    EXPECT_EQ(slot, nullptr);
}

TEST_F(SmartWindowTest, HasNoFlagsWithoutThemInItsArchive)
{
    Make();
    BMessage archive;
    {
        auto* window = new SmartWindow(kFrame, "A window", nullptr, nullptr, 4);
        window->Archive(&archive, false);
        Destroy(window);
    }
    archive.RemoveName("sw:flags");
    KeeperLooper* looper = new KeeperLooper;
    looper->Run();
    auto* window = new SmartWindow(&archive, "", &looper->fKeeper, nullptr);
    window->AddChild(new BView(BRect(0, 0, 9, 9), "child", B_FOLLOW_NONE, 0));
    Run({[&](QelApp&) {
        EXPECT_TRUE(window->QuitRequested());
        EXPECT_TRUE(test::WaitFor([&] { return looper->fKeeper.fCount == 1; }));
        BMessage sent;
        ASSERT_EQ(looper->fKeeper.fLast.FindMessage("Archive", &sent), B_OK);
        EXPECT_FALSE(sent.HasData("_views", B_MESSAGE_TYPE)) << "shallow";
        Destroy(window);
    }});
}

TEST_F(SmartWindowTest, SendsItsArchiveToItsTarget)
{
    Make();
    KeeperLooper* looper = new KeeperLooper;
    looper->Run();
    SmartWindow* slot = nullptr;
    slot = new SmartWindow(kFrame, "A window", &looper->fKeeper, &slot, 2);
    SmartWindow* const window = slot;
    window->SetName("name");
    window->AddChild(new BView(BRect(0, 0, 9, 9), "child", B_FOLLOW_NONE, 0));
    Run({[&](QelApp&) {
             window->Show();
             window->PostMessage(B_QUIT_REQUESTED);
             Await([&] { return looper->fKeeper.fCount == 1; });
         },
         [&](QelApp&) {
             EXPECT_EQ(slot, nullptr) << "the window is gone";
             const BMessage& sent = looper->fKeeper.fLast;
             EXPECT_EQ(looper->fKeeper.fCount, 1);
             EXPECT_EQ(sent.what, MSG_WINDOW_CLOSED);
             void* pointer = nullptr;
             EXPECT_EQ(sent.FindPointer("Window", &pointer), B_OK);
             EXPECT_EQ(pointer, window);
             EXPECT_EQ(sent.FindPointer("Container", &pointer), B_OK);
             EXPECT_EQ(pointer, &slot);
             const char* name = nullptr;
             EXPECT_EQ(sent.FindString("Name", &name), B_OK);
             EXPECT_STREQ(name, "name");
             BMessage archive;
             ASSERT_EQ(sent.FindMessage("Archive", &archive), B_OK);
             EXPECT_TRUE(archive.HasData("_views", B_MESSAGE_TYPE)) << "deep";
         }});
}

TEST_F(SmartWindowTest, SendsNothingToATargetWithoutALooper)
{
    Make();
    Keeper keeper;
    auto* window = new SmartWindow(kFrame, "A window", &keeper, nullptr, 0);
    Run({[&](QelApp&) { EXPECT_TRUE(window->QuitRequested()); }, [&](QelApp&) { Destroy(window); }});
    EXPECT_EQ(keeper.fCount, 0);
}
