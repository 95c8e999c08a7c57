#include "kits/interface/desktop/IniFile.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace kits
