// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TextView.h"

/// The text of the first tab: how long this machine has been up, now, in total and at best. Updated every second.
///
/// It reads the application's uptime table and the common store; it stays empty if there is no application of ours.
/// `UptimeText()` makes the text.
class UptimeView : public BTextView {
public:
    explicit UptimeView(BRect frame);

    /// Sets the window's pulse to one second.
    void AllAttached() override;
    void Pulse() override;
    /// Lays the text out over the whole view.
    void FrameResized(float width, float height) override;

    /// Makes the text and shows it.
    void Refresh();
};
