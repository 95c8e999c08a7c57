// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"
#include "kits/interface/View.h"

#include <memory>
#include <string>

namespace kits {
class Content;
}

/// The two values of a control that is on or off.
enum { B_CONTROL_OFF = 0, B_CONTROL_ON = 1 };

/// Base of everything that has a label and a value and sends a message when the user changes it: buttons, check boxes,
/// sliders, text fields, colours.
///
/// The screen's toolkit draws the control and handles its mouse, keyboard and focus; this class keeps what the program
/// knows of it. The label is also the name that assistive technology speaks.
///
/// What the program sets is silent. What the user does sends the message of the control, a copy to which "when" (int64,
/// microseconds of system_time()) and "source" (pointer to the control) are added, to its target. A control that has no
/// target when it is attached to a window takes the window.
///
/// On being attached a control takes the view colour of its parent, and grows to what it needs where its frame is
/// smaller; controls whose height the font decides take exactly that height (they say so).
///
/// Setters may be called from any thread under the looper lock; the screen follows from the main thread.
class BControl : public BView, public BInvoker {
public:
    /// @param label    copied; null is an empty label
    /// @param message  sent on a change by the user; the control owns it from here; null sends nothing
    BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode, uint32 flags);
    ~BControl() override;

    void AttachedToWindow() override;

    virtual void SetLabel(const char* label);
    const char* Label() const { return fLabel.c_str(); }

    /// Sets the value without sending anything. What the value means, and its range, is told by each control.
    virtual void SetValue(int32 value);
    int32 Value() const { return fValue; }

    /// A disabled control shows greyed, takes no focus and answers no user.
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const { return fEnabled; }

    /// Sends `message`, or the control's own one when it is null, as told above.
    /// @return B_BAD_VALUE without a message, else what sending returned
    status_t Invoke(BMessage* message = nullptr) override;

    /// The size that label and font ask for, in pixels as right minus left and bottom minus top. Main thread, or any
    /// thread once the control was attached.
    void GetPreferredSize(float* width, float* height) override;

protected:
    /// Makes the toolkit's widget; called once, on the main thread, when the control is attached or asked for its
    /// preferred size. The caller owns it. Its signals are connected with fContent as their context.
    virtual QWidget* MakeWidget() = 0;
    /// Brings that widget up to date with the state of this object: called on the main thread after every change, and
    /// once when the widget has been made.
    virtual void UpdateWidget();
    /// Asks for UpdateWidget(): at once on the main thread, else queued for it. Nothing while there is no widget.
    void WidgetNeedsUpdate();
    /// The widget, made now if need be; null on another thread before it was made.
    QWidget* EnsureWidget();

    /// For AttachedToWindow: where the frame is smaller than the preferred size, it becomes as large as that.
    void GrowToPreferred();
    /// For AttachedToWindow: the height becomes the preferred one, the width stays.
    void TakePreferredHeight();

    void WidgetCreated(QWidget* widget) override;
    void ViewColorChanged() override;

    /// Takes a value over from the user's hand: the value is stored, nothing is sent and the widget is left alone.
    void StoreValue(int32 value) { fValue = value; }

    std::unique_ptr<kits::Content> fContent;

private:
    std::string fLabel;
    int32 fValue = B_CONTROL_OFF;
    bool fEnabled = true;
};
