// SPDX-License-Identifier: MIT
#include "kits/application/teams/TeamFolder.h"

#include "kits/application/teams/TeamSocket.h"
#include "kits/kernel/Errors.h"
#include "tests/support/RuntimeFolder.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using kits::TeamFolder;

namespace {

constexpr const char* kSignature = "application/x-vnd.test-Team";

class TeamFolderTest : public testing::Test {
protected:
    test::RuntimeFolder fRuntime;
    TeamFolder fFolder;
};

void Touch(const std::string& path)
{
    std::ofstream(path) << "";
}

} // namespace

TEST_F(TeamFolderTest, IsMadeForTheUserAlone)
{
    EXPECT_FALSE(fFolder.IsOpen());
    EXPECT_EQ(fFolder.Open(), B_OK);
    struct stat info;
    ASSERT_EQ(stat((fRuntime.Path() + "/kits").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0700u);
    TeamFolder again;
    EXPECT_EQ(again.Open(), B_OK);
    EXPECT_TRUE(fFolder.List().empty());
}

TEST_F(TeamFolderTest, IsNotUsedIfSomethingElseIsInItsPlace)
{
    const std::string path = fRuntime.Path() + "/kits";
    const std::string elsewhere = fRuntime.Path() + "/elsewhere";
    std::filesystem::create_directory(elsewhere);
    chmod(elsewhere.c_str(), 0700);
    std::filesystem::create_directory_symlink(elsewhere, path);
    EXPECT_EQ(fFolder.Open(), B_PERMISSION_DENIED);
    std::filesystem::remove(path);
    Touch(path);
    EXPECT_EQ(fFolder.Open(), B_PERMISSION_DENIED);
    std::filesystem::remove(path);
    for (const mode_t mode : {0755, 0770, 0707, 0701}) {
        std::filesystem::create_directory(path);
        chmod(path.c_str(), mode);
        EXPECT_EQ(fFolder.Open(), B_PERMISSION_DENIED) << std::oct << mode;
        std::filesystem::remove(path);
    }
    if (geteuid() == 0) {
        std::filesystem::create_directory(path);
        chmod(path.c_str(), 0700);
        ASSERT_EQ(chown(path.c_str(), 12345, 12345), 0);
        EXPECT_EQ(fFolder.Open(), B_PERMISSION_DENIED);
        std::filesystem::remove(path);
    }
    EXPECT_FALSE(fFolder.IsOpen());
    EXPECT_EQ(fFolder.Open(), B_OK);
}

TEST_F(TeamFolderTest, SaysWhatIsWrongWithWhatIsInItsPlace)
{
    const std::string path = fRuntime.Path() + "/kits";
    const auto obstacle = [&] {
        std::string text = "as before";
        EXPECT_NE(TeamFolder().Open(&text), B_OK);
        std::filesystem::remove(path);
        return text;
    };
    std::filesystem::create_symlink("nowhere", path);
    EXPECT_EQ(obstacle(), path + " is a link");
    Touch(path);
    EXPECT_EQ(obstacle(), path + " is not a folder");
    std::filesystem::create_directory(path);
    chmod(path.c_str(), 0750);
    EXPECT_EQ(obstacle(), path + " is open to other users");
    if (geteuid() == 0) {
        std::filesystem::create_directory(path);
        ASSERT_EQ(chown(path.c_str(), 12345, 12345), 0);
        EXPECT_EQ(obstacle(), path + " belongs to another user");
    }
    std::string text;
    EXPECT_EQ(fFolder.Open(&text), B_OK);
    EXPECT_EQ(text, "");
    EXPECT_EQ(fFolder.Path(), path);
}

TEST_F(TeamFolderTest, LiesElsewhereIfTheRuntimeFolderIsNotSafe)
{
    const std::string other = "/tmp/kits-" + std::to_string(geteuid());
    const bool wasThere = std::filesystem::exists(other);
    const auto lies = [&] {
        TeamFolder folder;
        EXPECT_EQ(folder.Open(), B_OK);
        const bool isOther = std::filesystem::equivalent(folder.PathOf("."), other);
        return isOther;
    };
    chmod(fRuntime.Path().c_str(), 0755);
    EXPECT_TRUE(lies());
    setenv("XDG_RUNTIME_DIR", "relative", 1);
    EXPECT_TRUE(lies());
    setenv("XDG_RUNTIME_DIR", "/nowhere/to/be/found", 1);
    EXPECT_TRUE(lies());
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_TRUE(lies());
    if (!wasThere)
        std::filesystem::remove(other);
}

TEST_F(TeamFolderTest, NamesSocketsBySignatureAndTeam)
{
    EXPECT_EQ(TeamFolder::MakeName({kSignature, 0x12AB}), "x-vnd.test-Team@00000000000012ab");
    EXPECT_EQ(TeamFolder::MakeName({"", UINT64_MAX}), "@ffffffffffffffff");
    TeamFolder::Entry entry;
    EXPECT_TRUE(TeamFolder::ParseName("x-vnd.test-Team@00000000000012ab", &entry));
    EXPECT_EQ(entry.signature, kSignature);
    EXPECT_EQ(entry.team, 0x12ABu);
    EXPECT_TRUE(TeamFolder::ParseName("@ffffffffffffffff", &entry));
    EXPECT_EQ(entry.signature, "");
    EXPECT_EQ(entry.team, UINT64_MAX);
    for (const char* name :
         {"", ".", "..", "@", "a@", "a@12", "a@00000000000012aB", "a@00000000000012abc", "a b@00000000000012ab",
          ".new@00000000000012ab x", "a/b@00000000000012ab", "a@b@00000000000012ab", "x-vnd.test-Team.lock"})
        EXPECT_FALSE(TeamFolder::ParseName(name, &entry)) << name;
}

TEST_F(TeamFolderTest, KnowsASignature)
{
    EXPECT_TRUE(TeamFolder::IsSignature(kSignature));
    EXPECT_TRUE(TeamFolder::IsSignature("application/" + std::string(64, 'x')));
    for (const std::string& text :
         {std::string(), std::string("application/"), std::string("text/plain"), std::string("application/a/b"),
          std::string("application/a@b"), std::string("application/a b"), "application/" + std::string(65, 'x')})
        EXPECT_FALSE(TeamFolder::IsSignature(text)) << text;
}

TEST_F(TeamFolderTest, ListsTheLivingAndRemovesWhatTheDeadHaveLeft)
{
    ASSERT_EQ(fFolder.Open(), B_OK);
    const kits::team_address self = kits::ThisTeam();
    const std::string folder = fRuntime.Path() + "/kits/";
    Touch(folder + TeamFolder::MakeName({kSignature, self}));
    Touch(folder + TeamFolder::MakeName({"", self}));
    // The same process id at another time, and an impossible one.
    Touch(folder + TeamFolder::MakeName({kSignature, self ^ 1}));
    Touch(folder + TeamFolder::MakeName({kSignature, UINT64_MAX}));
    Touch(folder + "something else");
    const auto list = fFolder.List();
    EXPECT_EQ(list.size(), 2u);
    const auto found = fFolder.Find(kSignature);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].team, self);
    EXPECT_TRUE(fFolder.Find("application/x-vnd.test-Other").empty());
    EXPECT_FALSE(std::filesystem::exists(folder + TeamFolder::MakeName({kSignature, self ^ 1})));
    EXPECT_TRUE(std::filesystem::exists(folder + "something else"));
}

TEST(TeamFolder, MayHaveAPathLongerThanTheAddressOfASocket)
{
    const test::RuntimeFolder runtime(std::string(200, 'x'));
    TeamFolder folder;
    ASSERT_EQ(folder.Open(), B_OK);
    kits::FileDescriptor listener, connection;
    const TeamFolder::Entry entry{"application/" + std::string(64, 'y'), kits::ThisTeam()};
    EXPECT_EQ(kits::Listen(folder, entry, &listener), B_OK);
    EXPECT_EQ(kits::Connect(folder, entry.team, &connection), B_OK);
    EXPECT_EQ(folder.Find(entry.signature).size(), 1u);
    pid_t process = 0;
    EXPECT_TRUE(kits::IsOfThisUser(connection.Get(), &process));
    EXPECT_EQ(process, getpid());
}

TEST_F(TeamFolderTest, DoesNotConnectToWhoeverTookTheNameOfAnother)
{
    ASSERT_EQ(fFolder.Open(), B_OK);
    kits::FileDescriptor listener, connection;
    EXPECT_EQ(kits::Connect(fFolder, kits::ThisTeam(), &connection), B_BAD_HANDLER);
    // A name of this process's parent.
    const kits::team_address parent = kits::TeamOfProcess(getppid());
    ASSERT_EQ(kits::Listen(fFolder, {"", parent}, &listener), B_OK);
    EXPECT_EQ(kits::Connect(fFolder, parent, &connection), B_PERMISSION_DENIED);
    EXPECT_FALSE(connection.IsOpen());
    // A name of this process with another start time: there is no such process.
    kits::FileDescriptor second;
    ASSERT_EQ(kits::Listen(fFolder, {"", kits::ThisTeam() + 1}, &second), B_OK);
    EXPECT_EQ(kits::Connect(fFolder, kits::ThisTeam() + 1, &connection), B_BAD_HANDLER);
    // A socket that nobody listens to any more.
    listener.Close();
    EXPECT_EQ(kits::Connect(fFolder, parent, &connection), B_BAD_HANDLER);
}
