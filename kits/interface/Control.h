// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"
#include "kits/interface/WidgetView.h"

#include <string>

/// The values of a control that is on or off.
enum { B_CONTROL_OFF = 0, B_CONTROL_ON = 1 };

/// Base of all views that have a label and a value and send a message when the user changes it: buttons, check boxes,
/// sliders, text fields, colours. The label is also the name that assistive technology speaks.
///
/// Changes by the program send nothing. Changes by the user send a copy of the control's message to its target, with
/// "when" (int64, microseconds of system_time()) and "source" (pointer to the control) added. A control without a
/// target takes its window as the target when it is attached.
///
/// When it is attached, a control takes the view colour of its parent, and grows to its preferred size where its frame
/// is smaller; controls whose height depends on the font take exactly that height (their classes say so).
class BControl : public kits::WidgetView, public BInvoker {
public:
    /// @param label    copied; null is an empty label
    /// @param message  sent on a change by the user; owned by the control from here; null sends nothing
    BControl(BRect frame, const char* name, const char* label, BMessage* message,
             uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);

    void AttachedToWindow() override;

    virtual void SetLabel(const char* label);
    const char* Label() const { return fLabel.c_str(); }

    /// Sets the value without sending anything. Each control defines the meaning of the value, and its range.
    virtual void SetValue(int32 value);
    int32 Value() const { return fValue; }

    /// A disabled control is greyed, takes no focus and ignores the user.
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const { return fEnabled; }

    /// Sends `message`, or the control's own one if that is null, as described above.
    /// @return B_BAD_VALUE without a message, otherwise the result of sending
    status_t Invoke(BMessage* message = nullptr) override;

    /// The size that label and font need, in pixels as right minus left and bottom minus top. Main thread, or any
    /// thread once the control was attached.
    void GetPreferredSize(float* width, float* height) override;

protected:
    void UpdateWidget() override;

    /// For AttachedToWindow: enlarges the frame to the preferred size where it is smaller.
    void GrowToPreferred();
    /// For AttachedToWindow: sets the preferred height, and keeps the width.
    void TakePreferredHeight();

    /// Stores a value that the user has set: sends nothing and does not touch the widget.
    void StoreValue(int32 value) { fValue = value; }

private:
    std::string fLabel;
    int32 fValue = B_CONTROL_OFF;
    bool fEnabled = true;
};
