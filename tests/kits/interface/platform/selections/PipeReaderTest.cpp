// SPDX-License-Identifier: MIT
#include "kits/interface/platform/selections/PipeReader.h"

#include "tests/support/GuiTest.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>

namespace {

class PipeReaderTest : public testing::Test {
protected:
    PipeReaderTest()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        fWrite = ends[1];
        fRead = ends[0];
        fReader = std::make_unique<kits::PipeReader>(fRead, 10, [this](const std::optional<std::string>& bytes) {
            fEnds++;
            fBytes = bytes;
            if (fDestroys)
                fReader.reset();
        });
    }
    ~PipeReaderTest() override
    {
        CloseWrite();
        fReader.reset();
        test::Turn();
    }
    void Write(const std::string& bytes)
    {
        ASSERT_EQ(write(fWrite, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        test::Turn();
    }
    void CloseWrite()
    {
        if (fWrite >= 0)
            close(std::exchange(fWrite, -1));
        test::Turn();
    }

    int fRead = -1;
    int fWrite = -1;
    int fEnds = 0;
    bool fDestroys = false;
    std::optional<std::string> fBytes;
    std::unique_ptr<kits::PipeReader> fReader;
};

} // namespace

TEST_F(PipeReaderTest, ReadsToTheEndAsDataCome)
{
    Write("four");
    Write("more");
    EXPECT_EQ(fEnds, 0);
    CloseWrite();
    EXPECT_TRUE(test::WaitFor([this] { return fEnds > 0; }));
    EXPECT_EQ(fBytes, "fourmore");
}

TEST_F(PipeReaderTest, RefusesMoreThanAllowed)
{
    Write("eleven byte");
    EXPECT_TRUE(test::WaitFor([this] { return fEnds > 0; }));
    EXPECT_EQ(fBytes, std::nullopt);
    CloseWrite();
    EXPECT_EQ(fEnds, 1);
}

TEST_F(PipeReaderTest, MayBeDestroyedInItsOwnCallAndBefore)
{
    fDestroys = true;
    CloseWrite();
    EXPECT_TRUE(test::WaitFor([this] { return fEnds > 0; }));
    EXPECT_EQ(fReader, nullptr);
    EXPECT_EQ(fcntl(fRead, F_GETFD), -1);
}
