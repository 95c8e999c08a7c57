// SPDX-License-Identifier: MIT
#include "kits/storage/Entry.h"

#include "kits/storage/Directory.h"
#include "kits/storage/Path.h"
#include "tests/support/Disks.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

std::string NameOf(const BEntry& entry)
{
    entry_ref ref;
    return entry.GetRef(&ref) == B_OK ? ref.name : "";
}

} // namespace

TEST(Entry, StandsForANameThatMayNotExist)
{
    const TempFolder folder;
    const BDirectory directory(folder.Path().c_str());
    const BEntry entry(&directory, "store");
    EXPECT_EQ(entry.InitCheck(), B_OK);
    EXPECT_FALSE(entry.Exists());
    folder.Put("store", "x");
    EXPECT_TRUE(entry.Exists());
    EXPECT_EQ(NameOf(entry), "store");
    BPath path;
    EXPECT_EQ(entry.GetPath(&path), B_OK);
    EXPECT_EQ(path.Path(), folder.Path("store"));
}

TEST(Entry, NeedsAFolderThatExists)
{
    const TempFolder folder;
    EXPECT_EQ(BEntry().InitCheck(), B_NO_INIT);
    EXPECT_EQ(BEntry(folder.Path("no/store").c_str()).InitCheck(), B_ENTRY_NOT_FOUND);
    folder.Put("file", "");
    EXPECT_EQ(BEntry(folder.Path("file/store").c_str()).InitCheck(), B_NOT_A_DIRECTORY);
    const BDirectory missing(folder.Path("no").c_str());
    EXPECT_EQ(BEntry(&missing, "store").InitCheck(), B_ENTRY_NOT_FOUND);
}

TEST(Entry, RefusesLeavesThatAreNone)
{
    const TempFolder folder;
    const BDirectory directory(folder.Path().c_str());
    EXPECT_EQ(BEntry(&directory, "").InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BEntry(&directory, nullptr).InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BEntry(&directory, "/etc/passwd").InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BEntry(&directory, std::string(256, 'n').c_str()).InitCheck(), B_NAME_TOO_LONG);
    EXPECT_EQ(BEntry(&directory, std::string(255, 'n').c_str()).InitCheck(), B_OK);
}

TEST(Entry, GoesToAReferenceAndBack)
{
    const TempFolder folder;
    entry_ref ref;
    EXPECT_EQ(BEntry(folder.Path("store").c_str()).GetRef(&ref), B_OK);
    EXPECT_EQ(ref, (entry_ref{folder.Path(), "store"}));
    EXPECT_EQ(BEntry(&ref), BEntry(folder.Path("store").c_str()));
    entry_ref other;
    EXPECT_EQ(get_ref_for_path(folder.Path("store").c_str(), &other), B_OK);
    EXPECT_EQ(other, ref);
    EXPECT_EQ(get_ref_for_path("/", &other), B_BAD_VALUE);
    const entry_ref none;
    EXPECT_EQ(BEntry(&none).InitCheck(), B_BAD_VALUE);
}

TEST(Entry, RenamesInItsFolderAndStandsForTheNewName)
{
    const TempFolder folder;
    folder.Put("old", "bytes");
    BEntry entry(folder.Path("old").c_str());
    EXPECT_EQ(entry.Rename("new"), B_OK);
    EXPECT_EQ(NameOf(entry), "new");
    EXPECT_EQ(folder.Names(), std::set<std::string>{"new"});
    EXPECT_EQ(folder.Get("new"), "bytes");
}

TEST(Entry, ReplacesAnotherFileOnlyWhenToldTo)
{
    const TempFolder folder;
    folder.Put("a", "A");
    folder.Put("b", "B");
    BEntry entry(folder.Path("a").c_str());
    EXPECT_EQ(entry.Rename("b"), B_FILE_EXISTS);
    EXPECT_EQ(NameOf(entry), "a");
    EXPECT_EQ(folder.Get("b"), "B");
    EXPECT_EQ(entry.Rename("b", true), B_OK);
    EXPECT_EQ(folder.Names(), std::set<std::string>{"b"});
    EXPECT_EQ(folder.Get("b"), "A");
}

TEST(Entry, KeepsItsNameWhenRenamingFails)
{
    const TempFolder folder;
    folder.Put("a", "A");
    BEntry entry(folder.Path("a").c_str());
    EXPECT_EQ(entry.Rename(std::string(300, 'n').c_str(), true), B_NAME_TOO_LONG);
    EXPECT_EQ(entry.Rename(""), B_BAD_VALUE);
    FailingDisk disk(0, EIO);
    const WithDisk with(disk);
    EXPECT_EQ(entry.Rename("b"), B_IO_ERROR);
    EXPECT_EQ(NameOf(entry), "a");
    EXPECT_TRUE(entry.Exists());
}

TEST(Entry, TouchesALinkItselfUnlessToldToFollow)
{
    const TempFolder folder;
    folder.Put("file", "bytes");
    std::filesystem::create_symlink("file", folder.Path("link"));
    std::filesystem::create_symlink("link", folder.Path("linklink"));
    EXPECT_EQ(NameOf(BEntry(folder.Path("linklink").c_str(), true)), "file");
    BEntry entry(folder.Path("link").c_str());
    EXPECT_EQ(NameOf(entry), "link");
    EXPECT_EQ(entry.Remove(), B_OK);
    EXPECT_TRUE(folder.Has("file"));
    EXPECT_TRUE(BEntry(folder.Path("linklink").c_str()).Exists()) << "a link that leads nowhere has its name";
}

TEST(Entry, GivesUpOnLinksThatGoInCircles)
{
    const TempFolder folder;
    std::filesystem::create_symlink("b", folder.Path("a"));
    std::filesystem::create_symlink("a", folder.Path("b"));
    EXPECT_EQ(BEntry(folder.Path("a").c_str(), true).InitCheck(), B_LINK_LIMIT);
}

TEST(Entry, Removes)
{
    const TempFolder folder;
    folder.Put("a", "A");
    BEntry entry(folder.Path("a").c_str());
    EXPECT_EQ(entry.Remove(), B_OK);
    EXPECT_FALSE(folder.Has("a"));
    EXPECT_EQ(entry.Remove(), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(BEntry().Remove(), B_NO_INIT);
}

TEST(Entry, KnowsLinksWhereverTheyLead)
{
    const TempFolder folder;
    folder.Put("file", "");
    std::filesystem::create_symlink("file", folder.Path("link"));
    std::filesystem::create_symlink("nowhere", folder.Path("dangling"));
    std::filesystem::create_directory_symlink(".", folder.Path("folder"));
    for (const char* const name : {"link", "dangling", "folder"})
        EXPECT_TRUE(BEntry(folder.Path(name).c_str()).IsSymLink()) << name;
    for (const char* const name : {"file", "nowhere"})
        EXPECT_FALSE(BEntry(folder.Path(name).c_str()).IsSymLink()) << name;
    EXPECT_FALSE(BEntry().IsSymLink());
}
