// SPDX-License-Identifier: MIT
#include "src/pages/SysinfoTab.h"

#include "kits/support/TypeConstants.h"
#include "src/support/MessageCodes.h"
#include "tests/src/pages/PageTest.h"

#include <gtest/gtest.h>

namespace {

class SysinfoTabTest : public PageTest {
protected:
    SysinfoTabTest()
        : fSampler(10)
    {
    }
    ~SysinfoTabTest() override { application_sampler = nullptr; }

    void ShowPage()
    {
        fPage = Show(new SysinfoTab(&fSampler));
        fSamples = FindNth<BSlider>(fPage, 0);
        fDelay = FindNth<BSlider>(fPage, 1);
    }

    Sysinfo fSampler;
    SysinfoTab* fPage = nullptr;
    BSlider* fSamples = nullptr;
    BSlider* fDelay = nullptr;
};

} // namespace

TEST_F(SysinfoTabTest, HasTwoSliders)
{
    fPage = new SysinfoTab(&fSampler);
    AddPage(fPage);
    fSamples = FindNth<BSlider>(fPage, 0);
    fDelay = FindNth<BSlider>(fPage, 1);
    EXPECT_STREQ(fPage->Name(), "Sysinfo");
    EXPECT_STREQ(fSamples->Label(), "Average of");
    EXPECT_STREQ(fDelay->Label(), "Delay");
    int32 low = 0;
    int32 high = 0;
    fSamples->GetLimits(&low, &high);
    EXPECT_EQ(low, 2);
    EXPECT_EQ(high, 200);
    EXPECT_STREQ(fSamples->MinLimitLabel(), "2");
    EXPECT_STREQ(fSamples->MaxLimitLabel(), "200");
    fDelay->GetLimits(&low, &high);
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 200);
    EXPECT_STREQ(fDelay->MinLimitLabel(), "0.01 sec");
    EXPECT_STREQ(fDelay->MaxLimitLabel(), "5 sec");
    EXPECT_EQ(fSamples->Message()->what, uint32(MSG_SAMPLES_SLIDER));
    EXPECT_EQ(fDelay->Message()->what, uint32(MSG_DELAY_SLIDER));
    for (const BSlider* slider : {fSamples, fDelay}) {
        EXPECT_EQ(slider->HashMarks(), B_HASH_MARKS_BOTTOM);
        EXPECT_EQ(slider->HashMarkCount(), 20);
        EXPECT_EQ(slider->Style(), B_TRIANGLE_THUMB);
    }
}

TEST_F(SysinfoTabTest, OpeningItShowsTheNearestStepAndSetsThat)
{
    ShowPage();
    EXPECT_EQ(fSamples->Value(), 10);
    EXPECT_STREQ(fSamples->Label(), "Use 10 samples to calculate averages");
    // 0.2 seconds lie between the steps 7 and 8.
    EXPECT_EQ(fDelay->Value(), 8);
    EXPECT_STREQ(fDelay->Label(), "Wait 0.21 sec between samples");
    EXPECT_EQ(fSampler.SamplingDelay(), 209600);
    EXPECT_EQ(fSampler.NodesToKeep(), 10);
}

TEST_F(SysinfoTabTest, TheSamplesSliderSetsTheHistory)
{
    ShowPage();
    Use(fSamples, 3);
    EXPECT_EQ(fSampler.NodesToKeep(), 3);
    EXPECT_STREQ(fSamples->Label(), "Use 3 samples to calculate averages");
    Use(fSamples, 200);
    EXPECT_EQ(fSampler.NodesToKeep(), 200);
    Use(fSamples, 1);
    EXPECT_EQ(fSampler.NodesToKeep(), 2);
}

TEST_F(SysinfoTabTest, TheDelaySliderIsLinear)
{
    ShowPage();
    Use(fDelay, 0);
    EXPECT_EQ(fSampler.SamplingDelay(), 10000);
    EXPECT_STREQ(fDelay->Label(), "Wait 0.01 sec between samples");
    Use(fDelay, 1);
    EXPECT_EQ(fSampler.SamplingDelay(), 34950);
    Use(fDelay, 100);
    EXPECT_EQ(fSampler.SamplingDelay(), 2505000);
    EXPECT_STREQ(fDelay->Label(), "Wait 2.51 sec between samples");
    Use(fDelay, 200);
    EXPECT_EQ(fSampler.SamplingDelay(), 5000000);
    EXPECT_STREQ(fDelay->Label(), "Wait 5.00 sec between samples");
}

TEST_F(SysinfoTabTest, NeverLeavesTheRangeOfDelays)
{
    ShowPage();
    for (int32 value = 0; value <= 200; value++) {
        fDelay->SetValue(value);
        BMessage message(MSG_DELAY_SLIDER);
        fPage->MessageReceived(&message);
        EXPECT_GE(fSampler.SamplingDelay(), 10000);
        EXPECT_LE(fSampler.SamplingDelay(), 5000000);
        EXPECT_NEAR(static_cast<double>(fSampler.SamplingDelay()), 10000 + 24950.0 * value, 1.0);
    }
}

TEST_F(SysinfoTabTest, ExtremeSettingsAreHeldToTheSliders)
{
    fSampler.SetNodesToKeep(1);
    fSampler.SetSamplingDelay(3600LL * 1000000);
    ShowPage();
    EXPECT_EQ(fSamples->Value(), 2);
    EXPECT_EQ(fSampler.NodesToKeep(), 2);
    EXPECT_EQ(fDelay->Value(), 200);
    EXPECT_EQ(fSampler.SamplingDelay(), 5000000);
}

TEST_F(SysinfoTabTest, RevertPutsBackWhatWasThereWhenItWasMade)
{
    fSampler.SetNodesToKeep(17);
    ShowPage();
    Use(fSamples, 50);
    Use(fDelay, 100);
    fPage->Revert();
    EXPECT_EQ(fSampler.NodesToKeep(), 17);
    EXPECT_EQ(fSampler.SamplingDelay(), 200000);
}

TEST_F(SysinfoTabTest, TheButtonFillsTheControlsToo)
{
    ShowPage();
    Use(fSamples, 50);
    Use(fDelay, 100);
    Post(MSG_PREFS_REVERT);
    EXPECT_EQ(fSamples->Value(), 10);
    EXPECT_EQ(fDelay->Value(), 8);
    EXPECT_STREQ(fSamples->Label(), "Use 10 samples to calculate averages");
}

TEST_F(SysinfoTabTest, ItsSettingsDoNotTravel)
{
    ShowPage();
    BMessage message;
    EXPECT_FALSE(fPage->SavePrefsForDD(&message));
    EXPECT_EQ(message.what, 0u);
    EXPECT_TRUE(message.IsEmpty());
}

TEST_F(SysinfoTabTest, LaysItsSlidersOutInThreeEqualGaps)
{
    ShowPage();
    for (const BPoint size : {BPoint(440, 280), BPoint(611, 403)}) {
        prefs->ResizeTo(size.x, size.y);
        test::Turn();
        const float width = fPage->Bounds().Width();
        const float height = fSamples->Bounds().Height();
        EXPECT_FLOAT_EQ(fDelay->Bounds().Height(), height);
        const float gap = (fPage->Bounds().Height() - 2 * height) / 3;
        EXPECT_GT(gap, 0);
        EXPECT_FLOAT_EQ(fSamples->Frame().left, width * 0.02f);
        EXPECT_FLOAT_EQ(fDelay->Frame().left, width * 0.02f);
        EXPECT_NEAR(fSamples->Bounds().Width(), width * 0.96f, 0.001);
        EXPECT_NEAR(fDelay->Bounds().Width(), width * 0.96f, 0.001);
        EXPECT_NEAR(fSamples->Frame().top, gap, 0.001);
        EXPECT_NEAR(fDelay->Frame().top, 2 * gap + height, 0.001);
    }
}

TEST_F(SysinfoTabTest, WithoutASamplerItTakesTheApplicationsOwn)
{
    application_sampler = &fSampler;
    fPage = Show(new SysinfoTab(nullptr));
    Use(FindNth<BSlider>(fPage, 0), 44);
    EXPECT_EQ(fSampler.NodesToKeep(), 44);
}

TEST_F(SysinfoTabTest, AnApplicationWhoseSamplerIsGoneIsLeftAlone)
{
    application_sampler = &fSampler;
    ShowPage();
    application_sampler = nullptr;
    Use(fSamples, 44);
    Use(fDelay, 44);
    fPage->Revert();
    fPage->GetState();
    EXPECT_EQ(fSampler.NodesToKeep(), 10);
    EXPECT_EQ(fSampler.SamplingDelay(), 209600);
}

TEST_F(SysinfoTabTest, WithNoSamplerAtAllItDoesNothing)
{
    fPage = Show(new SysinfoTab(nullptr));
    Use(FindNth<BSlider>(fPage, 0), 44);
    Use(FindNth<BSlider>(fPage, 1), 44);
    fPage->Revert();
    EXPECT_STREQ(FindNth<BSlider>(fPage, 0)->Label(), "Use 44 samples to calculate averages");
}

TEST_F(SysinfoTabTest, ForgetsItsSampler)
{
    ShowPage();
    fPage->ForgetModel();
    Use(fSamples, 44);
    fPage->Revert();
    EXPECT_EQ(fSampler.NodesToKeep(), 10);
}
