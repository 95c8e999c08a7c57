// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"
#include "kits/interface/View.h"

#include <memory>
#include <string>

namespace kits {
class Content;
}

/// The values of a control that is on or off.
enum { B_CONTROL_OFF = 0, B_CONTROL_ON = 1 };

/// Base of all views that have a label and a value and send a message when the user changes it: buttons, check boxes,
/// sliders, text fields, colours.
///
/// The toolkit draws the control and handles its mouse, keyboard and focus; this class keeps the control's state. The
/// label is also the name that assistive technology speaks.
///
/// Changes by the program send nothing. Changes by the user send a copy of the control's message to its target, with
/// "when" (int64, microseconds of system_time()) and "source" (pointer to the control) added. A control without a
/// target takes its window as the target when it is attached.
///
/// When it is attached, a control takes the view colour of its parent, and grows to its preferred size where its frame
/// is smaller; controls whose height depends on the font take exactly that height (their classes say so).
///
/// Setters may be called from any thread under the looper lock; the main thread updates the screen.
class BControl : public BView, public BInvoker {
public:
    /// @param label    copied; null is an empty label
    /// @param message  sent on a change by the user; owned by the control from here; null sends nothing
    BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode, uint32 flags);
    ~BControl() override;

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
    /// Makes the toolkit's widget; called once, on the main thread, when the control is attached or asked for its
    /// preferred size. The caller owns the widget. Its signals are connected with fContent as their context.
    virtual QWidget* MakeWidget() = 0;
    /// Brings that widget up to date with the state of this object. Called on the main thread after every change, and
    /// once when the widget was made.
    virtual void UpdateWidget();
    /// Calls UpdateWidget(), at once on the main thread, otherwise queued for it. Does nothing while there is no
    /// widget.
    void WidgetNeedsUpdate();
    /// Returns the widget, making it if necessary; null on another thread before it was made.
    QWidget* EnsureWidget();

    /// For AttachedToWindow: enlarges the frame to the preferred size where it is smaller.
    void GrowToPreferred();
    /// For AttachedToWindow: sets the preferred height, and keeps the width.
    void TakePreferredHeight();

    void WidgetCreated(QWidget* widget) override;
    void ViewColorChanged() override;

    /// Stores a value that the user has set: sends nothing and does not touch the widget.
    void StoreValue(int32 value) { fValue = value; }

    std::unique_ptr<kits::Content> fContent;

private:
    std::string fLabel;
    int32 fValue = B_CONTROL_OFF;
    bool fEnabled = true;
};
