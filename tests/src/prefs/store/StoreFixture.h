// SPDX-License-Identifier: MIT
#pragma once

#include "src/prefs/store/Preferences.h"
#include "tests/support/BoundProcess.h"
#include "tests/support/Disks.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

/// Stores in a settings folder of the test's own.
class StoreFixture : public testing::Test {
protected:
    static constexpr const char* kName = "application/x-vnd.test-Store";
    static constexpr const char* kFile = "x-vnd.test-Store.user";
    static constexpr const char* kBackup = "x-vnd.test-Store.user.backup";
    static constexpr const char* kKept = "x-vnd.test-Store.user.kept";

    StoreFixture() { setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1); }

    /// Fills a store so that every field differs between any two numbers.
    static void Fill(Preferences& store, int32 number)
    {
        store.MakeEmpty();
        store.AddInt32("Number", number);
        store.AddString("Text", std::string(static_cast<size_t>(10 + number), static_cast<char>('a' + number)));
        BMessage window('wind');
        window.AddRect("Frame", BRect(0, 0, static_cast<float>(number), 100));
        window.AddBool("Odd", number % 2 != 0);
        store.AddMessage("Window", &window);
    }

    /// Returns the number with which a store is filled; -1 for an empty store, -2 for a damaged one.
    static int32 NumberOf(const Preferences& store)
    {
        if (store.IsEmpty())
            return -1;
        int32 number = 0;
        if (store.FindInt32("Number", &number) != B_OK || number < 0 || number > 25)
            return -2;
        Preferences whole(store);
        Fill(whole, number);
        return whole.HasSameData(store) ? number : -2;
    }

    /// Returns what the next start of the program finds.
    static int32 NumberAtStart() { return NumberOf(Preferences(kName, false)); }

    /// Returns the bytes of the file of a store that is filled with a number.
    std::string BytesOf(int32 number) const
    {
        fFolder.Clear();
        Preferences store(kName, false);
        Fill(store, number);
        EXPECT_EQ(store.Sync(), B_OK);
        const std::string bytes = fFolder.Get(kFile);
        EXPECT_FALSE(bytes.empty());
        fFolder.Clear();
        return bytes;
    }

    /// Runs in a process of its own.
    /// @return whether that process was killed; it may fail in no other way
    template <class Body> static bool RunsUntilKilled(Body body)
    {
        const pid_t child = test::ForkBound();
        if (child == 0) {
            body();
            _exit(0);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        const bool killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        EXPECT_TRUE(killed || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << "status " << status;
        return killed;
    }

    const TempFolder fFolder{TempFolder::Place::kMemory};
};
