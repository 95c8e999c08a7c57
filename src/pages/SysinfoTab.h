// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "src/prefs/PrefsTab.h"

class BSlider;
class Sysinfo;

/// The page of the sampler's two settings: how many samples the history keeps, which is the span of every average, and
/// the time between two samples. Both take effect while their slider moves.
///
/// The delay slider has 200 steps of 24.95 milliseconds from 10 milliseconds on. It shows a delay between two steps as
/// the nearer one, and the page writes that back, so opening the page can change the delay a little; likewise a history
/// of one sample becomes one of two.
class SysinfoTab : public PrefsTab {
public:
    /// @param sampler  null for the application's sampler: the page looks that up at each use. Any other sampler must
    ///                 outlive the page
    explicit SysinfoTab(Sysinfo* sampler);

    void MessageReceived(BMessage* message) override;
    void Rerender() override;
    void GetState() override;
    void Revert() override;
    /// Returns false: the sampler's settings mean nothing to a chart.
    bool SavePrefsForDD(BMessage* message) override;
    void ForgetModel() override;
    void GetMinimumSize(float* width, float* height) override;

private:
    Sysinfo* Sampler() const;
    void SamplesChanged();
    void DelayChanged();

    Sysinfo* fSampler; // not used for the application's
    bool fIsApplications;
    // Children of this view.
    BSlider* fSamples;
    BSlider* fDelay;
    BMessage fSnapshot;
};
