// SPDX-License-Identifier: MIT
#include "kits/interface/platform/desktops/IniFile.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kits {
namespace {

TEST(IniFileTest, HasGroupsOfKeys)
{
    const IniFile file("top=1\n[General]\n key = a value \r\n\n[Containments][1]\nkey=other\n[General]\nkey2=later\n");
    EXPECT_EQ(file.Value("", "top"), "1");
    EXPECT_EQ(file.Value("General", "key"), "a value");
    EXPECT_EQ(file.Value("General", "key2"), "later");
    EXPECT_EQ(file.Value("Containments][1", "key"), "other");
    EXPECT_EQ(file.Value("Containments", "key"), std::nullopt);
    EXPECT_EQ(file.Groups().size(), 3u);
}

TEST(IniFileTest, KnowsMarksAndEscapes)
{
    const IniFile file(
        "[g]\n# key=comment\nkey[$i]=fixed\nspaces=\\sa\\tb\\\\c\\\nempty=\n=nothing\nno sign\n[broken\n[]\n");
    EXPECT_EQ(file.Value("g", "key"), "fixed");
    EXPECT_EQ(file.Value("g", "spaces"), " a\tb\\c\\");
    EXPECT_EQ(file.Value("g", "empty"), "");
    EXPECT_EQ(file.Value("g", ""), std::nullopt);
    EXPECT_EQ(file.Groups().size(), 1u);
}

TEST(IniFileTest, TakesAnyFile)
{
    TempFolder folder(TempFolder::Place::kMemory);
    EXPECT_TRUE(IniFile::Read(folder.Path("missing")).Groups().empty());
    EXPECT_TRUE(IniFile::Read(folder.Path()).Groups().empty());
    folder.Put("large", "[g]\nkey=value\n" + std::string(1024 * 1024, '\n'));
    EXPECT_TRUE(IniFile::Read(folder.Path("large")).Groups().empty());
    using namespace std::string_literals;
    folder.Put("bytes", "[g]\0]\nk\xff=\xfe\n"s);
    EXPECT_EQ(IniFile::Read(folder.Path("bytes")).Groups().size(), 1u);
    folder.Put("good", "[g]\nkey=value");
    EXPECT_EQ(IniFile::Read(folder.Path("good")).Value("g", "key"), "value");
}

/// Opening a pipe without a writer would wait for ever, and a device has no end.
TEST(IniFileTest, ReadsRegularFilesOnly)
{
    TempFolder folder(TempFolder::Place::kMemory);
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(IniFile::TextOf(folder.Path("pipe")), std::nullopt);
    EXPECT_EQ(IniFile::TextOf("/dev/zero"), std::nullopt);
    folder.Put("file", "text");
    std::filesystem::create_symlink("file", folder.Path("link"));
    EXPECT_EQ(IniFile::TextOf(folder.Path("link")), "text");
    std::filesystem::create_symlink("loop", folder.Path("loop"));
    EXPECT_EQ(IniFile::TextOf(folder.Path("loop")), std::nullopt);
}

TEST(IniFileTest, LeavesValuesAsTheyAreWritten)
{
    const std::string text = "[g]\nkey= \"a\\xfc\\sb\" \n";
    EXPECT_EQ(IniFile(text, IniFile::Values::kAsWritten).Value("g", "key"), "\"a\\xfc\\sb\"");
}

TEST(IniFileTest, UnescapesAsQtEscapes)
{
    EXPECT_EQ(UnescapedByQt("plain"), "plain");
    EXPECT_EQ(UnescapedByQt("\"a, b; c\\\"d\\\\e\""), "a, b; c\"d\\e");
    EXPECT_EQ(UnescapedByQt("\\xe4\\x20ac\\xd83d\\xde00g\\x41\\n\\t"), "\u00e4\u20ac\U0001f600gA\n\t");
    EXPECT_EQ(UnescapedByQt("\u00e4"), "\u00e4");
    using namespace std::string_literals;
    EXPECT_EQ(UnescapedByQt("a\\x0z"), "a\0z"s);
    // Broken ones.
    EXPECT_EQ(UnescapedByQt("\\"), "\\");
    EXPECT_EQ(UnescapedByQt("\\xde00g"), "g");
    EXPECT_EQ(UnescapedByQt("\\xd83d"), "");
    EXPECT_EQ(UnescapedByQt("\\xfffffff41"), "\uff41"s);
}

} // namespace
} // namespace kits
