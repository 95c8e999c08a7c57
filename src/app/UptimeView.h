// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TextView.h"

/// The text of the first tab: how long this machine has been up, now, in all and at best. Written anew each second.
///
/// It reads the application's uptime table and the common store; where there is no application of ours, it stays
/// empty. What it says is made by `UptimeText()`.
class UptimeView : public BTextView {
public:
    explicit UptimeView(BRect frame);

    /// Sets the window's pulse to one second.
    void AllAttached() override;
    void Pulse() override;
    /// The text is laid out over the whole view.
    void FrameResized(float width, float height) override;

    /// Builds the text and shows it.
    void Refresh();
};
