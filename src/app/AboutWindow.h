// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"
#include "kits/interface/Window.h"

class AboutView;
class BButton;

/// Says what the program is and who made it. The maker's address and home page can be dragged from it, and a double
/// click opens them with the user's own programs.
///
/// Made with `new`, it deletes itself when it is closed. Main thread, as every window.
class AboutWindow : public BWindow {
public:
    /// @param ownerSlot  the owner's pointer to this window, cleared when it closes; may be null
    AboutWindow(BRect frame, AboutWindow** ownerSlot);
    ~AboutWindow() override;

    bool QuitRequested() override;

    /// Where the window belongs on a screen: centred, in its upper part.
    /// @param screen  frame of the screen
    static BRect FrameOn(BRect screen);

private:
    void ClearOwnerSlot();

    AboutWindow** fOwnerSlot;
    AboutView* fView; // a child of the window
};

/// What fills the window: the drawn lines and a button that closes it.
///
/// By keyboard: the arrow keys choose one of the two lines that can be acted on, Enter and the space key open it.
class AboutView : public BView {
public:
    /// @param window  gets B_QUIT_REQUESTED from the button
    AboutView(BRect frame, BWindow* window);

    void AllAttached() override;
    void Draw(BRect update) override;
    /// One click on a line drags its text; two or more open it.
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 count) override;

    /// Where the lines were drawn; empty before.
    BRect MailRect() const { return fMailRect; }
    BRect HomeRect() const { return fHomeRect; }

private:
    enum class Line { kNone, kMail, kHome };

    Line LineAt(BPoint where) const;
    void DragLine(Line line);
    static void OpenLine(Line line);
    BRect DrawLine(const char* text, BPoint where, Line line);

    BButton* fButton; // a child
    const char* fMailText;
    const char* fHomeText;
    BRect fMailRect{0, 0, -1, -1};
    BRect fHomeRect{0, 0, -1, -1};
    Line fChosen = Line::kMail;
};
