// SPDX-License-Identifier: MIT
#include "kits/application/EventLoop.h"
#include "kits/application/InterfaceLock.h"
#include "kits/application/MainThread.h"
#include "kits/application/Timer.h"
#include "tests/src/chart/ChartTestKit.h"
#include "tests/support/PictureReader.h"
#include "tests/support/Png.h"
#include "tests/support/TempFolder.h"

#include <sys/stat.h>

#include <atomic>
#include <thread>

// Charts scroll on while another thread asks for the averages of pictures, whatever these are.

namespace {

constexpr rgb_color kBlack = make_color(0, 0, 0);

class ChartBesidePicturesTest : public ChartWindowTest {
protected:
    void SetUp() override
    {
        ChartWindowTest::SetUp();
        // The reader of pictures measures its time by the clock.
        kits::SetClockSource(nullptr);
        AddChart(100, 30);
        AddSources(*chart, 1);
    }

    /// Makes pictures of every format, and files that are none, in one folder.
    std::vector<std::string> MakePictures() const
    {
        const auto grey = [](int, int) { return png::Samples{1, 1, 1, 1}; };
        for (const auto& [type, depth] : {std::pair(png::kGrey, 1), std::pair(png::kGrey, 16), std::pair(png::kRgb, 8),
                                          std::pair(png::kRgba, 16), std::pair(png::kGreyAlpha, 8)})
            folder.Put(std::to_string(type) + "-" + std::to_string(depth) + ".png",
                       png::Make(40, 30, {type, depth}, grey));
        folder.Put("palette.png", png::Make(40, 30, {png::kPalette, 1, true, {{1, 2, 3, 255}, {4, 5, 6, 9}}}, grey));
        for (const char* name : {"half.bmp", "half.gif", "half.jpg", "half.svg", "half.tif", "half.webp", "half.xpm"})
            std::filesystem::copy_file(std::string(QEL_TEST_DATA "/pictures/") + name, folder.Path(name));
        folder.Put("broken.jpg", folder.Get("half.jpg").substr(0, 200));
        folder.Put("broken.png", folder.Get("2-8.png").substr(0, 50));
        folder.Put("broken.svg", "<svg");
        EXPECT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
        std::vector<std::string> paths = {"/dev/zero", "/proc/self/mem", folder.Path()};
        for (const std::string& name : folder.Names())
            paths.push_back(folder.Path(name));
        return paths;
    }

    TempFolder folder{TempFolder::Place::kMemory};
    BuiltPictureReader reader;
};

} // namespace

TEST_F(ChartBesidePicturesTest, AThousandAreReadWhileItScrolls)
{
    constexpr int kRounds = 1000;
    const std::vector<std::string> paths = MakePictures();
    folder.Put("good.png", png::Make(8, 8, {png::kRgb, 8}, [](int, int) { return png::Samples{10, 20, 30}; }));
    folder.Put("huge.png", png::MakeHuge(10000, 10000, {png::kRgb, 8}, 0x40));
    const uint64 elsewhere = kits::EventLoop::CountEventsElsewhere();
    const uint64 unlocked = kits::EventLoop::CountUnlockedEvents();
    std::atomic<int> count = 0;
    std::atomic<int> countGood = 0;
    std::atomic<int> countHuge = 0;
    std::atomic<int> countLocked = 0;
    int countSamples = 0;

    kits::Timer sampler([&] {
        BMessage sample = SampleMessage({.memory = 100 + countSamples % 800});
        window->PostMessage(&sample, chart);
        countSamples++;
    });
    sampler.Start(25000); // a chart skips samples that come faster
    std::thread worker([&] {
        for (int i = 0; i < kRounds; i++) {
            reader.Use();
            if (i % 10 == 0)
                countGood += kits::AverageOfFile(folder.Path("good.png"), kBlack) == make_color(10, 20, 30);
            else if (i % 250 == 1)
                countHuge += kits::AverageOfFile(folder.Path("huge.png"), kBlack) == make_color(64, 64, 64);
            else
                kits::AverageOfFile(paths[static_cast<size_t>(i) % paths.size()], kBlack);
            countLocked += kits::InterfaceLock::Get().ReleaseAll() > 0;
            count++;
        }
    });
    int countScrolled = 0;
    for (int done = 0; done < kRounds; done += 50) {
        const int samples = countSamples;
        const std::vector<int> before = Heights(*chart);
        EXPECT_TRUE(test::WaitFor([&] { return count >= done + 50 && countSamples > samples + 5; })) << done;
        countScrolled += Heights(*chart) != before;
    }
    const int32 depth = kits::InterfaceLock::Get().ReleaseAll();
    worker.join();
    kits::InterfaceLock::Get().Restore(depth);
    EXPECT_EQ(countScrolled, kRounds / 50);
    EXPECT_EQ(countGood, kRounds / 10);
    EXPECT_EQ(countHuge, kRounds / 250);
    EXPECT_EQ(countLocked, 0);
    EXPECT_EQ(kits::EventLoop::CountEventsElsewhere(), elsewhere);
    EXPECT_EQ(kits::EventLoop::CountUnlockedEvents(), unlocked);
}
