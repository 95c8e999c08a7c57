// SPDX-License-Identifier: MIT
#include "kits/storage/Node.h"

#include "kits/storage/Entry.h"
#include "kits/storage/File.h"
#include "kits/support/TypeConstants.h"
#include "tests/support/BoundProcess.h"
#include "tests/support/Disks.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>

#include <cstring>

namespace {

/// A disk whose file system has no attributes.
class NoAttributes : public kits::FailingDevice {
public:
    int Before(kits::FileAction& action) override
    {
        using kits::FileCall;
        return action.call == FileCall::kReadAttribute || action.call == FileCall::kWriteAttribute ? ENOTSUP : 0;
    }
};

class NodeAt : public BNode {
public:
    explicit NodeAt(const std::string& path) { SetTo(path.c_str()); }
};

/// Writes and reads an attribute of one file through two nodes.
void UseAttributes(const std::string& path)
{
    const char title[] = "A title";
    {
        NodeAt node(path);
        EXPECT_EQ(node.WriteAttr("META:title", B_STRING_TYPE, 0, title, sizeof title),
                  static_cast<ssize_t>(sizeof title));
    }
    NodeAt node(path);
    char buffer[64];
    EXPECT_EQ(node.ReadAttr("META:title", B_STRING_TYPE, 0, buffer, sizeof buffer), static_cast<ssize_t>(sizeof title));
    EXPECT_STREQ(buffer, title);
    EXPECT_EQ(node.ReadAttr("META:other", B_STRING_TYPE, 0, buffer, sizeof buffer), B_ENTRY_NOT_FOUND);
}

} // namespace

TEST(Node, StandsForAnExistingFile)
{
    const TempFolder folder;
    EXPECT_EQ(BNode().InitCheck(), B_NO_INIT);
    EXPECT_EQ(NodeAt(folder.Path("no")).InitCheck(), B_ENTRY_NOT_FOUND);
    folder.Put("file", "12345");
    const BEntry entry(folder.Path("file").c_str());
    const BNode node(&entry);
    off_t size = 0;
    EXPECT_EQ(node.GetSize(&size), B_OK);
    EXPECT_EQ(size, 5);
    EXPECT_EQ(node.GetSize(nullptr), B_BAD_VALUE);
}

TEST(Node, DoesNotWaitForTheOtherEndOfAPipe)
{
    const TempFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(NodeAt(folder.Path("pipe")).InitCheck(), B_OK);
}

TEST(Node, OneNodeHoldsTheLock)
{
    const TempFolder folder;
    folder.Put("file", "");
    NodeAt first(folder.Path("file"));
    NodeAt second(folder.Path("file"));
    EXPECT_EQ(first.Lock(), B_OK);
    EXPECT_EQ(first.Lock(), B_BUSY);
    EXPECT_EQ(second.Lock(), B_BUSY);
    EXPECT_EQ(second.Unlock(), B_BAD_VALUE);
    EXPECT_EQ(first.Unlock(), B_OK);
    EXPECT_EQ(second.Lock(), B_OK);
    second.Unset();
    EXPECT_EQ(first.Lock(), B_OK) << "closing gives it up";
    EXPECT_EQ(BNode().Lock(), B_NO_INIT);
}

TEST(Node, AnotherProcessHoldsTheLockToItsEnd)
{
    const TempFolder folder;
    folder.Put("file", "");
    int locked[2];
    int release[2];
    ASSERT_EQ(pipe(locked), 0);
    ASSERT_EQ(pipe(release), 0);
    const pid_t child = test::ForkBound();
    if (child == 0) {
        NodeAt node(folder.Path("file"));
        const char status = node.Lock() == B_OK ? 'y' : 'n';
        char byte;
        if (write(locked[1], &status, 1) != 1 || read(release[0], &byte, 1) != 1)
            _exit(1);
        _exit(0);
    }
    char status = 0;
    ASSERT_EQ(read(locked[0], &status, 1), 1);
    ASSERT_EQ(status, 'y');
    NodeAt node(folder.Path("file"));
    EXPECT_EQ(node.Lock(), B_BUSY);
    ASSERT_EQ(write(release[1], "x", 1), 1);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_EQ(node.Lock(), B_OK);
    for (const int descriptor : {locked[0], locked[1], release[0], release[1]})
        close(descriptor);
}

TEST(Node, AFileSystemWithoutLocksGrantsThem)
{
    const TempFolder folder;
    folder.Put("file", "");
    NodeAt node(folder.Path("file"));
    FailingDisk disk(0, ENOLCK);
    const WithDisk with(disk);
    EXPECT_EQ(node.Lock(), B_OK);
    EXPECT_EQ(node.Unlock(), B_OK);
}

TEST(Node, KeepsToItsFileWhateverItsName)
{
    const TempFolder folder;
    folder.Put("a", "");
    const NodeAt node(folder.Path("a"));
    BEntry entry(folder.Path("a").c_str());
    EXPECT_TRUE(node.IsAt(&entry));
    ASSERT_EQ(entry.Rename("b"), B_OK);
    EXPECT_TRUE(node.IsAt(&entry));
    const BEntry old(folder.Path("a").c_str());
    EXPECT_FALSE(node.IsAt(&old));
    folder.Put("a", "");
    EXPECT_FALSE(node.IsAt(&old)) << "another file of that name";
}

TEST(Node, KeepsAttributesWithTheFile)
{
    const TempFolder folder;
    folder.Put("file", "");
    UseAttributes(folder.Path("file"));
}

TEST(Node, RemembersAttributesWhereTheFileSystemCannot)
{
    const TempFolder folder;
    folder.Put("file", "");
    NoAttributes disk;
    const WithDisk with(disk);
    UseAttributes(folder.Path("file"));
}

TEST(Node, ANewFileHasNoneOfTheAttributesOfAnOlderOne)
{
    const TempFolder folder;
    NoAttributes disk;
    const WithDisk with(disk);
    for (int round = 0; round < 20; ++round) {
        folder.Put("file", "");
        NodeAt node(folder.Path("file"));
        char byte;
        ASSERT_EQ(node.ReadAttr("a", B_ANY_TYPE, 0, &byte, 1), B_ENTRY_NOT_FOUND) << "round " << round;
        ASSERT_EQ(node.WriteAttr("a", B_RAW_TYPE, 0, "x", 1), 1);
        BEntry(folder.Path("file").c_str()).Remove();
    }
}

TEST(Node, AttributesAreWrittenInParts)
{
    const TempFolder folder;
    folder.Put("file", "");
    NodeAt node(folder.Path("file"));
    EXPECT_EQ(node.WriteAttr("a", B_RAW_TYPE, 4, "45", 2), 2);
    char buffer[8] = {};
    EXPECT_EQ(node.ReadAttr("a", B_ANY_TYPE, 0, buffer, sizeof buffer), 6);
    EXPECT_EQ(std::memcmp(buffer,
                          "\0\0\0\0"
                          "45",
                          6),
              0);
    EXPECT_EQ(node.WriteAttr("a", B_STRING_TYPE, 0, "0123", 4), 4);
    EXPECT_EQ(node.ReadAttr("a", B_STRING_TYPE, 2, buffer, 3), 3);
    EXPECT_EQ(std::memcmp(buffer, "234", 3), 0);
    EXPECT_EQ(node.ReadAttr("a", B_STRING_TYPE, 6, buffer, 3), 0);
    EXPECT_EQ(node.ReadAttr("a", B_STRING_TYPE, 1000000, buffer, 3), 0);
    EXPECT_EQ(node.ReadAttr("a", B_RAW_TYPE, 0, buffer, 3), B_MISMATCHED_VALUES);
}

TEST(Node, AttributesOfAnySizeUpToTheLimit)
{
    const TempFolder folder;
    folder.Put("file", "");
    NodeAt node(folder.Path("file"));
    const std::string most(65532, 'm');
    EXPECT_EQ(node.WriteAttr("a", B_RAW_TYPE, 0, most.data(), most.size()), 65532);
    std::string back(65532, ' ');
    EXPECT_EQ(node.ReadAttr("a", B_RAW_TYPE, 0, back.data(), back.size()), 65532);
    EXPECT_EQ(back, most);
    EXPECT_EQ(node.WriteAttr("a", B_RAW_TYPE, 1, most.data(), most.size()), B_DEVICE_FULL);
}

TEST(Node, RefusesBadAttributeArguments)
{
    const TempFolder folder;
    folder.Put("file", "");
    NodeAt node(folder.Path("file"));
    char byte = 0;
    EXPECT_EQ(node.WriteAttr("", B_RAW_TYPE, 0, "x", 1), B_BAD_VALUE);
    EXPECT_EQ(node.WriteAttr(nullptr, B_RAW_TYPE, 0, "x", 1), B_BAD_VALUE);
    EXPECT_EQ(node.WriteAttr("a", B_RAW_TYPE, -1, "x", 1), B_BAD_VALUE);
    EXPECT_EQ(node.WriteAttr("a", B_RAW_TYPE, 0, nullptr, 1), B_BAD_VALUE);
    EXPECT_EQ(node.WriteAttr(std::string(255, 'n').c_str(), B_RAW_TYPE, 0, "x", 1), B_NAME_TOO_LONG);
    EXPECT_EQ(node.ReadAttr("a", B_RAW_TYPE, -1, &byte, 1), B_BAD_VALUE);
    EXPECT_EQ(BNode().WriteAttr("a", B_RAW_TYPE, 0, "x", 1), B_NO_INIT);
    EXPECT_EQ(BNode().ReadAttr("a", B_RAW_TYPE, 0, &byte, 1), B_NO_INIT);
}

TEST(Node, AnAttributeThatAnotherProgramMadeIsNoAttributeOfOurs)
{
    const TempFolder folder;
    folder.Put("file", "");
    if (setxattr(folder.Path("file").c_str(), "user.a", "xy", 2, 0) != 0)
        GTEST_SKIP() << "the file system knows no attributes";
    char byte = 0;
    EXPECT_EQ(NodeAt(folder.Path("file")).ReadAttr("a", B_ANY_TYPE, 0, &byte, 1), B_BAD_VALUE);
}
