// SPDX-License-Identifier: MIT
#include "kits/kernel/FigureFile.h"

#include "tests/support/RecordedMachine.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// "COUNT MAXIMUM", both ended.
std::optional<kits::Figure> Parse(std::string_view text)
{
    const std::optional<uint64> count = kits::TakeNumber(&text);
    const std::optional<uint64> maximum = kits::FirstNumber(text);
    if (!count || !maximum)
        return std::nullopt;
    return kits::Figure{static_cast<int64>(*count), static_cast<int64>(*maximum)};
}

/// A machine whose root is that of this process.
class FigureFileTest : public testing::Test {
protected:
    FigureFileTest() { setenv("KITS_ROOT", machine.Root(), 1); }
    ~FigureFileTest() override { unsetenv("KITS_ROOT"); }

    RecordedMachine machine{1};
    kits::FigureFile file{"proc/figure", Parse};
};

} // namespace

TEST_F(FigureFileTest, IsReadAnewEachTime)
{
    machine.Write("proc/figure", "3 10\n");
    EXPECT_EQ(file.Read(), (kits::Figure{3, 10}));
    machine.Write("proc/figure", "4 20\n");
    EXPECT_EQ(file.Read(), (kits::Figure{4, 20}));
}

TEST_F(FigureFileTest, ThatCannotBeReadKeepsItsLastFigure)
{
    machine.Write("proc/figure", "3 10\n");
    EXPECT_EQ(file.Read(), (kits::Figure{3, 10}));
    for (const char* text : {"", "x", "7", "7 ", "7 2", " 7 20\n"}) {
        machine.Write("proc/figure", text);
        EXPECT_EQ(file.Read(), (kits::Figure{3, 10})) << text;
    }
}

TEST_F(FigureFileTest, HoldsItsFigureToWhatItCanBe)
{
    machine.Write("proc/figure", "30 10\n");
    EXPECT_EQ(file.Read(), (kits::Figure{10, 10}));
    machine.Write("proc/figure", "30 0\n");
    EXPECT_EQ(file.Read(), (kits::Figure{1, 1}));
    EXPECT_EQ(kits::HoldToRange({-1, 10}), (kits::Figure{0, 10}));
    EXPECT_EQ(kits::HoldToRange({5, INT64_MIN}), (kits::Figure{1, 1}));
}

TEST_F(FigureFileTest, ThatComesLaterIsFound)
{
    EXPECT_EQ(file.Read(), (kits::Figure{0, 1}));
    machine.Write("proc/figure", "3 10\n");
    EXPECT_EQ(file.Read(), (kits::Figure{3, 10}));
}

TEST_F(FigureFileTest, IsCutWhereItIsLong)
{
    machine.Write("proc/figure", "3 10\n" + std::string(10000, 'x'));
    EXPECT_EQ(file.Read(), (kits::Figure{3, 10}));
    machine.Write("proc/figure", "8 9" + std::string(10000, '0') + "\n");
    EXPECT_EQ(file.Read(), (kits::Figure{3, 10}));
}
