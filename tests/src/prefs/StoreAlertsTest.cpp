// SPDX-License-Identifier: MIT
#include "src/prefs/StoreAlerts.h"

#include "kits/interface/Alert.h"
#include "kits/storage/File.h"
#include "kits/support/TypeConstants.h"
#include "src/prefs/store/StoreWriter.h"
#include "tests/src/prefs/store/StoreFixture.h"
#include "tests/support/GuiTest.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <atomic>
#include <filesystem>
#include <functional>

namespace {

const kits::Field<int32> kNumber("Number", 0, kits::kMostNumber);

constexpr int kQuit = 0;
constexpr int kUseDefaults = 1;
constexpr int kTryAgain = 2;

/// Alerts about stores in a folder of the test's own.
class StoreAlertsTest : public StoreFixture {
protected:
    /// Puts store 1 in place and locks it.
    void PutLocked()
    {
        const std::string bytes = BytesOf(1);
        fFolder.Put(kFile, bytes);
        fHolder.SetTo(fFolder.Path(kFile).c_str());
        ASSERT_EQ(fHolder.Lock(), B_OK);
    }

    /// Presses these buttons of the next questions.
    void Answer(std::vector<int> buttons, const std::function<void()>& before = nullptr)
    {
        if (buttons.empty())
            return;
        QTimer::singleShot(1, qApp, [this, buttons, before]() mutable {
            QWidget* alert = QApplication::activeModalWidget();
            if (alert != nullptr) {
                if (before)
                    before();
                ++fQuestions;
                fText.clear();
                for (const QLabel* label : alert->findChildren<QLabel*>())
                    fText += label->text().toStdString();
                const int button = buttons.front();
                buttons.erase(buttons.begin());
                alert->findChildren<QPushButton*>().at(button)->click();
            }
            Answer(buttons, before);
        });
    }

    static const BAlert* AlertOf(const BMessenger& messenger)
    {
        return dynamic_cast<const BAlert*>(messenger.Target(nullptr));
    }

    static void Close(const BMessenger& alert)
    {
        alert.SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(test::WaitFor([&] { return !alert.IsValid(); }));
    }

    static bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

    BNode fHolder;
    int fQuestions = 0;
    std::string fText; ///< of the last question
};

/// Is full as long as the test says so.
class SwitchedDisk : public kits::FailingDevice {
public:
    int Before(kits::FileAction& action) override
    {
        return fIsFull && action.call == kits::FileCall::kWrite ? ENOSPC : 0;
    }
    std::atomic<bool> fIsFull = false;
};

} // namespace

TEST_F(StoreAlertsTest, NothingIsAskedAboutStoresThatAreThereOrMissing)
{
    Preferences missing(kName, false);
    EXPECT_TRUE(AskAboutUnreadStores({&missing}));
    EXPECT_FALSE(TellAboutKeptFiles({&missing}).IsValid());
    missing.AddInt32("Number", 1);
    ASSERT_EQ(missing.Sync(), B_OK);
    Preferences whole(kName, false);
    EXPECT_TRUE(AskAboutUnreadStores({&whole}));
}

TEST_F(StoreAlertsTest, ALockedStoreIsReadByAnotherAttempt)
{
    PutLocked();
    Preferences store(kName, false);
    EXPECT_EQ(store.UnreadStatus(), B_BUSY);
    Answer({kTryAgain, kTryAgain}, [this] {
        if (fQuestions == 1)
            fHolder.Unset();
    });
    EXPECT_TRUE(AskAboutUnreadStores({&store}));
    EXPECT_EQ(fQuestions, 2);
    EXPECT_TRUE(Has(fText, "Folder: " + fFolder.Path())) << fText;
    EXPECT_TRUE(Has(fText, std::string("File: ") + kFile)) << fText;
    EXPECT_TRUE(Has(fText, "Reason: Locked by another program")) << fText;
    EXPECT_EQ(NumberOf(store), 1);
    EXPECT_EQ(store.Sync(), B_OK);
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
}

TEST_F(StoreAlertsTest, ALockedStoreIsKeptWhenTheDefaultsAreUsed)
{
    PutLocked();
    Preferences store(kName, false);
    Answer({kUseDefaults});
    EXPECT_TRUE(AskAboutUnreadStores({&store}));
    EXPECT_TRUE(store.IsEmpty());
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile}) << "nothing happens before something is saved";
    fHolder.Unset();
    testing::internal::CaptureStderr();
    EXPECT_EQ(store.Sync(), B_OK);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(fFolder.Names(), (std::set<std::string>{kFile, kKept}));
}

TEST_F(StoreAlertsTest, ALockedStoreStaysWhenTheProgramQuits)
{
    PutLocked();
    Preferences store(kName, false);
    Answer({kQuit});
    EXPECT_FALSE(AskAboutUnreadStores({&store}));
    EXPECT_EQ(fFolder.Names(), std::set<std::string>{kFile});
}

TEST_F(StoreAlertsTest, WhatWasKeptIsTold)
{
    fFolder.Put(kFile, "broken");
    testing::internal::CaptureStderr();
    Preferences store(kName, false);
    testing::internal::GetCapturedStderr();
    const BMessenger alert = TellAboutKeptFiles({&store});
    ASSERT_NE(AlertOf(alert), nullptr);
    const std::string text = AlertOf(alert)->Text();
    EXPECT_TRUE(Has(text, "Folder: " + fFolder.Path() + "\nFile: " + kFile + "\nReason: Damaged")) << text;
    EXPECT_TRUE(Has(text, std::string("kept as ") + kKept)) << text;
    EXPECT_TRUE(Has(text, "defaults")) << text;
    EXPECT_FALSE(TellAboutKeptFiles({&store}).IsValid()) << "only once";
    Close(alert);
}

TEST_F(StoreAlertsTest, ItIsToldThatTheBackupIsUsedInstead)
{
    const std::string old = BytesOf(1);
    fFolder.Put(kFile, "broken");
    fFolder.Put(kBackup, old);
    testing::internal::CaptureStderr();
    Preferences store(kName, false);
    testing::internal::GetCapturedStderr();
    const BMessenger alert = TellAboutKeptFiles({&store});
    ASSERT_NE(AlertOf(alert), nullptr);
    EXPECT_TRUE(Has(AlertOf(alert)->Text(), "saved before")) << AlertOf(alert)->Text();
    EXPECT_FALSE(Has(AlertOf(alert)->Text(), "defaults")) << AlertOf(alert)->Text();
    Close(alert);
}

TEST_F(StoreAlertsTest, SavingThatFailsIsToldOnceAndAgainOnlyAfterASuccess)
{
    SwitchedDisk disk;
    const WithDisk with(disk);
    Preferences store(kName, false);
    StoreWriter writer;
    SaveAlarm alarm;
    int32 number = 0;
    const auto save = [&] {
        store.Set(kNumber, ++number);
        EXPECT_EQ(writer.Write(store), B_OK);
        writer.Drain();
        alarm.Look(writer, {&store});
    };
    save();
    EXPECT_FALSE(alarm.Alert().IsValid());

    disk.fIsFull = true;
    save();
    const BMessenger first = alarm.Alert();
    ASSERT_NE(AlertOf(first), nullptr);
    const std::string text = AlertOf(first)->Text();
    EXPECT_TRUE(Has(text, "Folder: " + fFolder.Path() + "\nFile: " + kFile + "\nReason: No space left")) << text;
    save();
    Close(first);
    save();
    EXPECT_FALSE(alarm.Alert().IsValid()) << "not again";

    disk.fIsFull = false;
    save();
    EXPECT_FALSE(alarm.Alert().IsValid());
    disk.fIsFull = true;
    save();
    ASSERT_TRUE(alarm.Alert().IsValid());
    Close(alarm.Alert());
}

TEST_F(StoreAlertsTest, AStoreWithoutAFolderIsTold)
{
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("HOME");
    Preferences store(kName, false);
    StoreWriter writer;
    EXPECT_EQ(writer.Write(store), B_NO_INIT);
    SaveAlarm alarm;
    alarm.Look(writer, {&store});
    ASSERT_NE(AlertOf(alarm.Alert()), nullptr);
    EXPECT_TRUE(Has(AlertOf(alarm.Alert())->Text(), "XDG_CONFIG_HOME is not set, and there is no home folder"));
    Close(alarm.Alert());
}

TEST_F(StoreAlertsTest, TheEndNamesFileAndReason)
{
    SwitchedDisk disk;
    const WithDisk with(disk);
    Preferences store(kName, false);
    EXPECT_EQ(SaveAtEnd({&store}, "qel"), B_OK);
    disk.fIsFull = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(SaveAtEnd({&store}, "qel"), B_DEVICE_FULL);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings could not be saved in " + fFolder.Path(kFile) + ": No space left\n");

    disk.fIsFull = false;
    store.AddString("Number", "text");
    store.Set(kNumber, 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(SaveAtEnd({&store}, "qel"), B_BAD_TYPE) << "a value is missing in what was saved";
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(Preferences(kName, false).CountNames(B_ANY_TYPE), 1);

    fFolder.Put("file", "");
    setenv("XDG_CONFIG_HOME", fFolder.Path("file").c_str(), 1);
    Preferences nowhere(kName, false);
    testing::internal::CaptureStderr();
    EXPECT_EQ(SaveAtEnd({&nowhere}, "qel"), B_FILE_EXISTS);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings could not be saved in " + fFolder.Path("file") + "/" + kFile + ": File exists\n")
        << "the reason of the folder";
}

TEST_F(StoreAlertsTest, TheEndSaysOnceWhatAllStoresSuffer)
{
    SwitchedDisk disk;
    const WithDisk with(disk);
    Preferences common(kName, true), user(kName, false);
    user.AddString("Number", "text");
    disk.fIsFull = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(SaveAtEnd({&common, &user}, "qel"), B_DEVICE_FULL);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "qel: the settings could not be saved in " + fFolder.Path() + ": No space left\n");
    // A save that succeeds, and a failure with another reason.
    disk.fIsFull = false;
    user.Set(kNumber, 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(SaveAtEnd({&common, &user}, "qel"), B_BAD_TYPE);
    const std::string line = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(line.starts_with("qel: the settings could not be saved in " + fFolder.Path(kFile) + ": ")) << line;
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
}

TEST_F(StoreAlertsTest, LongPathsFit)
{
    const std::string name(120, 'x');
    const std::string folder = fFolder.Path(name + "/" + name);
    std::filesystem::create_directories(folder);
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    std::filesystem::create_directories(folder + "/" + kFile);
    testing::internal::CaptureStderr();
    Preferences store(kName, false);
    testing::internal::GetCapturedStderr();
    const BMessenger alert = TellAboutKeptFiles({&store});
    ASSERT_NE(AlertOf(alert), nullptr);
    test::Turn();
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            if (!label->text().isEmpty()) {
                const QRect used = label->fontMetrics().boundingRect(QRect(0, 0, label->width(), 10000),
                                                                     Qt::AlignLeft | Qt::TextWordWrap, label->text());
                EXPECT_LE(used.width(), label->width());
                EXPECT_LE(used.height(), label->height());
            }
        }
    }
    Close(alert);
}
