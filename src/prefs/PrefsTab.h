// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

class BMessage;
class BTabView;

/// One page of a preferences window. It edits a model (the sampler, a chart) as the user works: every change takes
/// effect at once. It remembers the model's state from when it was made and can put the model back to it.
///
/// A page is laid out for the size it has, once when it is first shown and then whenever its size changes. All of this
/// runs in the main thread.
class PrefsTab : public BView {
public:
    /// A page of a provisional size; the real one comes when it is shown.
    /// @param name  also the label of its tab; copied
    explicit PrefsTab(const char* name);

    /// Fills the tab view's container but for a margin of 5 pixels, lays the page out if that was never done, and fills
    /// the controls. Derived classes call it first and then make themselves the target of their controls.
    void AllAttached() override;
    void FrameResized(float width, float height) override;
    /// What a drag of the page's tab carries.
    bool CopyRequested(BMessage* message) override;

    /// Lays the controls out for the page's present bounds. Derived classes call this one first.
    virtual void Rerender();
    /// Fills every control from the model.
    virtual void GetState() = 0;
    /// Puts the model back to its state from when the page was made.
    virtual void Revert() = 0;
    /// Writes the page's share of the model's settings into a message that charts take (MSG_PREFS_DROP).
    /// @return false, and the message is as before, if they mean nothing to another model
    virtual bool SavePrefsForDD(BMessage* message) = 0;
    /// The model is going away: from now on the page does nothing to it.
    virtual void ForgetModel() {}
    /// The size below which the layout would cut something off or lay one control over another. Depends on the font.
    virtual void GetMinimumSize(float* width, float* height) = 0;

    /// The tab view that shows the page; not owned. It has to be set before the page is shown.
    void SetOwner(BTabView* owner) { fOwner = owner; }

protected:
    /// To be called when GetMinimumSize() gives another size: the window grows if it is too small.
    void MinimumSizeChanged();

private:
    BTabView* fOwner = nullptr;
    bool fNeedsRerender = true;
};
