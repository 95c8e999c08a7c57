// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Window.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class BInvoker;

/// The picture that an alert shows.
enum alert_type { B_INFO_ALERT, B_WARNING_ALERT, B_STOP_ALERT };

/// The arrangement of an alert's buttons: with even gaps, or the first one set apart from the rest by a wider gap.
enum button_spacing { B_EVEN_SPACING = 0, B_OFFSET_SPACING };

/// A modal question or notice: a text, a picture that shows its kind, and one to three buttons.
///
/// The buttons stand at the right edge, from left to right by index; the last one is the default, which Enter presses.
/// Escape presses the only button, or none if there are several. Line ends and tabs of the text stay, and long lines
/// wrap.
///
/// An alert deletes itself when it has been answered. It needs no other window and no running application: it may be
/// shown before BApplication::Run().
class BAlert : public BWindow {
public:
    /// @param title     the title of the window
    /// @param text      UTF-8, plain
    /// @param button0,  button1, button2 labels; a null (or empty) one leaves out its button
    /// @param width     all buttons at least of the usual width, or each as wide as its label needs
    BAlert(const char* title, const char* text, const char* button0, const char* button1, const char* button2,
           button_width width, button_spacing spacing, alert_type type = B_INFO_ALERT);
    explicit BAlert(const char* title, const char* text, const char* button0, const char* button1 = nullptr,
                    const char* button2 = nullptr, button_width width = B_WIDTH_AS_USUAL,
                    alert_type type = B_INFO_ALERT);
    ~BAlert() override;

    int32 CountButtons() const { return static_cast<int32>(fButtons.size()); }
    /// For tests, which read alerts through it. Null beyond the last.
    const char* ButtonLabel(int32 index) const
    {
        return index < CountButtons() ? fButtons[static_cast<size_t>(index)].c_str() : nullptr;
    }
    const char* Text() const { return fText.c_str(); }
    alert_type Type() const { return fType; }

    /// Shows the alert and waits for the answer, in a nested event loop: the rest of the program continues. Main thread
    /// only.
    /// @return the index of the pressed button; 0 if the alert was closed in another way, or cut short because
    ///         something below it is destroyed
    int32 Go();
    /// Shows the alert and returns. When it has been answered, sends a copy of the invoker's message with "which"
    /// (int32), the index as above.
    /// @param invoker  owned from here; null sends nothing
    status_t Go(BInvoker* invoker);

    /// Brings the alert that was opened last and is unanswered to the front, on the workspace that the user sees. Does
    /// nothing if there is none. Main thread.
    static void ActivateOpen();

    /// Closing the alert answers it with 0.
    bool QuitRequested() override;

private:
    class Face;

    /// Shows it. Off the main thread, deletes it instead and returns false.
    bool Open();
    void Place();
    void Answer(int32 index);

    std::vector<std::string> fButtons;
    std::string fText;
    std::unique_ptr<BInvoker> fInvoker;
    std::function<void()> fAnswered; ///< while Go() waits
    Face* fFace;                     ///< a child of this window
    int32 fAnswer = 0;
    alert_type fType;
    bool fIsAnswered = false;
};
