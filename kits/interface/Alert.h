// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Window.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class BInvoker;

/// The picture that an alert shows.
enum alert_type { B_EMPTY_ALERT = 0, B_INFO_ALERT, B_IDEA_ALERT, B_WARNING_ALERT, B_STOP_ALERT };

/// How the buttons of an alert stand: with even gaps, or the first one set off from the rest by a wider one.
enum button_spacing { B_EVEN_SPACING = 0, B_OFFSET_SPACING };

/// A modal question or notice: a text, a picture that tells its kind, and one to three buttons.
///
/// The buttons stand from left to right by index, at the right edge; the last one is the default, which Enter presses.
/// Escape presses the button that SetShortcut() gave it, else the only button there is, else nothing. Line ends and
/// tabs of the text stay as they are, and long lines wrap.
///
/// An alert deletes itself when it has been answered. It needs no other window and no running application: it may be
/// asked before BApplication::Run().
class BAlert : public BWindow {
public:
    /// @param title    of the window
    /// @param text     UTF-8, plain
    /// @param button0, button1, button2  labels; those that are null (or empty) are left out
    /// @param width    all buttons of the usual width or wider, all as wide as the widest, or each as its label asks
    /// for
    BAlert(const char* title, const char* text, const char* button0, const char* button1, const char* button2,
           button_width width, button_spacing spacing, alert_type type = B_INFO_ALERT);
    explicit BAlert(const char* title, const char* text, const char* button0, const char* button1 = nullptr,
                    const char* button2 = nullptr, button_width width = B_WIDTH_AS_USUAL,
                    alert_type type = B_INFO_ALERT);
    ~BAlert() override;

    /// Lets a key press a button: a letter, digit or B_ESCAPE. 0 takes it away.
    void SetShortcut(int32 index, char shortcut);

    int32 CountButtons() const { return static_cast<int32>(fButtons.size()); }
    /// For tests, which read alerts through it. Null beyond the last.
    const char* ButtonLabel(int32 index) const
    {
        return index < CountButtons() ? fButtons[static_cast<size_t>(index)].c_str() : nullptr;
    }
    const char* Text() const { return fText.c_str(); }
    alert_type Type() const { return fType; }

    /// Shows the alert and waits for the answer, in a nested event loop: the rest of the program goes on. Main thread
    /// only.
    /// @return the index of the pressed button; 0 when the alert was closed in another way, or cut short because
    ///         something below it goes away
    int32 Go();
    /// Shows the alert and returns. When it has been answered, a copy of the invoker's message is sent with "which"
    /// (int32), the index as above.
    /// @param invoker  owned from here; null tells nobody
    status_t Go(BInvoker* invoker);

    /// Brings the alert that was opened last and is not answered to the front, on the workspace that the user sees.
    /// Without one nothing happens. Main thread.
    static void ActivateOpen();

    /// Closing the alert answers it with 0.
    bool QuitRequested() override;

private:
    class Face;

    void Place();
    void Answer(int32 index);

    std::vector<std::string> fButtons;
    std::vector<char> fShortcuts; ///< of each button, 0 for none
    std::string fText;
    std::unique_ptr<BInvoker> fInvoker;
    std::function<void()> fAnswered; ///< while Go() waits
    Face* fFace;                     ///< a child of this window
    int32 fAnswer = 0;
    alert_type fType;
    bool fIsAnswered = false;
};
