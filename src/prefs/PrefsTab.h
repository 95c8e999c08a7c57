// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

class BMessage;
class BTabView;

/// One page of a preferences window. It edits a model (the sampler, a chart) as the user works: every change takes
/// effect at once. It remembers the model's state from its own construction and can restore it.
///
/// A page is laid out for its current size, when it is first shown and whenever its size changes. All of this runs on
/// the main thread.
class PrefsTab : public BView {
public:
    /// A page of a provisional size; the real size is set when it is shown.
    /// @param name  also the label of its tab; copied
    explicit PrefsTab(const char* name);

    /// Fills the tab view's container except for a margin of 5 pixels, lays the page out if that was never done, fills
    /// the controls, and makes the page the target of its controls, lists and menus. Derived classes call it first.
    void AllAttached() override;
    void FrameResized(float width, float height) override;
    /// Copies what a drag of the page's tab carries.
    bool CopyRequested(BMessage* message) override;

    /// Lays the controls out for the page's present bounds. Derived classes call this one first.
    virtual void Rerender();
    /// Fills every control from the model.
    virtual void GetState() = 0;
    /// Restores the model's state from the construction of the page.
    virtual void Revert() = 0;
    /// Writes the page's share of the model's settings into a message that charts accept (MSG_PREFS_DROP).
    /// @return false, and the message is unchanged, if they mean nothing to another model
    virtual bool SavePrefsForDD(BMessage* message) = 0;
    /// The model is about to be destroyed: from now on the page does not touch it.
    virtual void ForgetModel() {}
    /// The size below which the layout would cut something off or lay one control over another. Depends on the font.
    virtual void GetMinimumSize(float* width, float* height) = 0;

    /// The tab view that shows the page; not owned. Must be set before the page is shown.
    void SetOwner(BTabView* owner) { fOwner = owner; }

protected:
    /// Call it when the result of GetMinimumSize() has changed: the window grows if it is too small.
    void MinimumSizeChanged();

private:
    BTabView* fOwner = nullptr;
    bool fNeedsRerender = true;
};
