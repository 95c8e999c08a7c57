#include "kits/application/Message.h"
#include "kits/kernel/SystemInfo.h"
#include "kits/storage/File.h"
#include "kits/storage/Resources.h"
#include "kits/support/Rect.h"
#include "kits/support/TypeConstants.h"
#include "src/app/Defaults.h"
#include "src/support/Qel.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

/// Writes a user's store with so many charts and such a delay between samples, for bench/footprint:
///   bench_store CHARTS DELAY FILE
/// The charts are those of the first start, over and over; the window has the size of the first start for three of
/// them, and grows to no less than 40 pixels a chart.

namespace {

constexpr float kLeastHeight = 40;

bool Arrange(BMessage& store, int charts)
{
    BMessage window;
    BMessage holder;
    if (store.FindMessage("MainWindow", &window) != B_OK || window.FindMessage("ChartViewHolder", &holder) != B_OK)
        return false;
    std::vector<BMessage> first;
    BMessage chart;
    for (int32 i = 0; holder.FindMessage("Chart", i, &chart) == B_OK; i++)
        first.push_back(chart);
    if (first.empty())
        return false;
    holder.RemoveName("Chart");
    for (int i = 0; i < charts; i++)
        holder.AddMessage("Chart", &first[static_cast<size_t>(i) % first.size()]);

    BRect frame;
    window.FindRect("WindowFrameWithCharts", &frame);
    if (frame.Height() < kLeastHeight * static_cast<float>(charts))
        frame.bottom = frame.top + kLeastHeight * static_cast<float>(charts);
    window.ReplaceRect("WindowFrameWithCharts", frame);
    window.ReplaceRect("_frame", frame);
    window.ReplaceMessage("ChartViewHolder", &holder);
    store.ReplaceMessage("MainWindow", &window);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s CHARTS DELAY FILE\n", argv[0]);
        return 2;
    }
    BResources resources;
    size_t size = 0;
    const void* defaults = resources.LoadResource(B_ANY_TYPE, "Defaults", &size);
    BMessage store;
    system_info info;
    if (defaults == nullptr ||
        store.Unflatten(static_cast<const char*>(defaults), static_cast<ssize_t>(size)) != B_OK ||
        get_system_info(&info) != B_OK)
        return 1;
    AdaptDefaultsToMachine(&store, info.cpu_count);
    if (!Arrange(store, std::atoi(argv[1])))
        return 1;
    BMessage sampler;
    sampler.AddInt64("Delay", std::atoll(argv[2]));
    sampler.AddInt16("NodesToKeep", 10);
    store.AddMessage("Sysinfo", &sampler);
    store.AddString("Version", kVersion);

    BFile file(argv[3], B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE);
    return file.InitCheck() == B_OK && store.Flatten(&file) == B_OK ? 0 : 1;
}
