// SPDX-License-Identifier: MIT
#include "src/pages/SysinfoTab.h"

#include "kits/interface/Slider.h"
#include "src/pages/PageControls.h"
#include "src/sampling/Sysinfo.h"
#include "src/support/FixedPoint.h"
#include "src/support/MessageCodes.h"

#include <algorithm>

namespace {

constexpr int32 kFewestSamples = 2;
constexpr int32 kDelaySteps = 200;
constexpr double kShortestDelay = 0.01; // seconds
constexpr double kDelayRange = 4.99;

} // namespace

SysinfoTab::SysinfoTab(Sysinfo* sampler)
    : PrefsTab(TrLater("Sysinfo"))
    , fSampler(sampler)
    , fIsApplications(sampler == nullptr || sampler == application_sampler)
{
    if (const Sysinfo* model = Sampler())
        model->SavePrefsTo(&fSnapshot);

    fSamples =
        AddSlider(this, Tr("Average of"), MSG_SAMPLES_SLIDER, kFewestSamples, Sysinfo::kMaxNodesToKeep, "2", "200", 20);
    fDelay = AddSlider(this, Tr("Delay"), MSG_DELAY_SLIDER, 0, kDelaySteps, Tr("0.01 sec"), Tr("5 sec"), 20);
}

Sysinfo* SysinfoTab::Sampler() const
{
    return fIsApplications ? application_sampler : fSampler;
}

void SysinfoTab::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_SAMPLES_SLIDER:
        SamplesChanged();
        break;
    case MSG_DELAY_SLIDER:
        DelayChanged();
        break;
    default:
        PrefsTab::MessageReceived(message);
    }
}

void SysinfoTab::SamplesChanged()
{
    const int32 samples = fSamples->Value();
    fSamples->SetLabel(kits::Filled(Tr("Use %1 samples to calculate averages"), {std::to_string(samples)}).c_str());
    Sysinfo* sampler = Sampler();
    if (sampler != nullptr && samples > 1)
        sampler->SetNodesToKeep(static_cast<int16>(samples));
}

void SysinfoTab::DelayChanged()
{
    const auto seconds = static_cast<float>(fDelay->Value() / double(kDelaySteps) * kDelayRange + kShortestDelay);
    fDelay->SetLabel(kits::Filled(Tr("Wait %1 sec between samples"), {FixedPoint(seconds, 2)}).c_str());
    if (Sysinfo* sampler = Sampler())
        sampler->SetSamplingDelay(static_cast<bigtime_t>(seconds * 1000000));
}

void SysinfoTab::GetState()
{
    const Sysinfo* sampler = Sampler();
    if (sampler == nullptr)
        return;
    fSamples->SetValue(sampler->NodesToKeep());
    const double seconds = static_cast<double>(sampler->SamplingDelay()) / 1000000.0;
    fDelay->SetPosition(static_cast<float>((seconds - kShortestDelay) / kDelayRange));
    PostToPage(this, MSG_SAMPLES_SLIDER);
    PostToPage(this, MSG_DELAY_SLIDER);
}

void SysinfoTab::Revert()
{
    if (Sysinfo* sampler = Sampler())
        sampler->LoadPrefsFrom(&fSnapshot);
}

bool SysinfoTab::SavePrefsForDD(BMessage*)
{
    return false;
}

void SysinfoTab::ForgetModel()
{
    // The application's sampler is looked up each time; this one is not used again.
    fSampler = nullptr;
}

void SysinfoTab::Rerender()
{
    PrefsTab::Rerender();
    const float width = Bounds().Width();
    const float sliderHeight = fSamples->Bounds().Height();
    const float gap = (Bounds().Height() - 2 * sliderHeight) / 3;
    float y = gap;
    for (BSlider* slider : {fSamples, fDelay}) {
        slider->MoveTo(width * 0.02f, y);
        slider->ResizeTo(width * 0.96f, slider->Bounds().Height());
        y += sliderHeight + gap;
    }
}

void SysinfoTab::GetMinimumSize(float* width, float* height)
{
    const BPoint samples = PreferredSizeOf(fSamples);
    const BPoint delay = PreferredSizeOf(fDelay);
    *width = std::max(samples.x, delay.x) / 0.96f;
    *height = samples.y + delay.y + 3 * kSmallestGap;
}
