// SPDX-License-Identifier: MIT
#include "src/app/DesktopKeeper.h"

#include "kits/application/Looper.h"
#include "kits/interface/Shelf.h"
#include "kits/interface/core/ViewImpl.h"
#include "src/chart/ChartView.h"
#include "tests/src/app/AppTest.h"
#include "tests/src/app/AppWindows.h"

namespace {

/// The source of a chart's drag: records how many charts were stored when it heard that its chart can go.
class ChartSource : public BLooper {
public:
    explicit ChartSource(const TempFolder& config)
        : fConfig(config)
    {
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what != B_REPLICANT_TAKEN)
            return;
        const std::string store = fConfig.Has(kStore) ? fConfig.Get(kStore) : "";
        stored = 0;
        for (size_t place = 0; (place = store.find("ChartType", place)) != std::string::npos; ++place)
            ++stored;
        isIdentityStored = store.find("this one") != std::string::npos;
    }

    int stored = -1;
    bool isIdentityStored = false;

private:
    static constexpr const char* kStore = "x-vnd.kvt-Qel.user";
    const TempFolder& fConfig;
};

class DesktopKeeperTest : public AppTest {};

} // namespace

TEST_F(DesktopKeeperTest, TellsTheSourceOfAChartWhenThatIsStored)
{
    ChartSource* source = nullptr;
    Run({[&](QelApp& app) {
             source = new ChartSource(fConfig);
             source->Run();
             BMessage archive;
             ASSERT_EQ(ChartView().Archive(&archive, false), B_OK);
             BShelf* const shelf = kits::ViewImpl::Of(&Charts(app)).fShelf;
             ASSERT_NE(shelf, nullptr);
             EXPECT_TRUE(shelf->AddReplicant(&archive, BPoint(), "this one", BMessenger(source)));
             Await([&] { return source->stored >= 0; });
         },
         [&](QelApp&) {
             EXPECT_EQ(source->stored, 4);
             EXPECT_TRUE(source->isIdentityStored);
         }});
    EXPECT_EQ(Finish(), B_OK);
}
