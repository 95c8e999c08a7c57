// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"
#include "kits/interface/Window.h"

class AboutView;
class BButton;

/// Shows what the program is and who made it. The user can drag the maker's address and home page from it, and opens
/// them with a double click in the user's own programs.
///
/// Made with `new`; deletes itself when it is closed. Main thread, as every window.
class AboutWindow : public BWindow {
public:
    /// @param ownerSlot  the owner's pointer to this window, cleared when it closes; may be null
    AboutWindow(BRect frame, AboutWindow** ownerSlot);
    ~AboutWindow() override;

    bool QuitRequested() override;

    /// Returns the window's place on a screen: centred, in its upper part.
    /// @param screen  frame of the screen
    static BRect FrameOn(BRect screen);

private:
    void ClearOwnerSlot();

    AboutWindow** fOwnerSlot;
    AboutView* fView; // a child of the window
};

/// The window's content: the drawn lines and a button that closes the window.
///
/// By keyboard: the arrow keys select one of the two active lines, and Enter or the space key opens it.
class AboutView : public BView {
public:
    /// @param window  gets B_QUIT_REQUESTED from the button
    AboutView(BRect frame, BWindow* window);

    void AllAttached() override;
    void Draw(BRect update) override;
    /// A single click on a line drags its text; a double click opens it.
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 count) override;

    /// Where the lines were drawn; empty before the first drawing.
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
