// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

class BWindow;

/// Asks the user where to save something: the file dialog of the user's desktop. It starts in the folder that was
/// chosen last, at first in the user's home. The user is asked before a file that exists is replaced; a name without
/// an ending gets the panel's.
///
/// The panel stays open beside everything else until the user saves, cancels, or the panel or its window goes; it may
/// be shown again after that. Main thread only.
class BFilePanel {
public:
    /// @param title   of the dialog, UTF-8
    /// @param kind    what such files are, shown with the ending: "PNG pictures"
    /// @param suffix  the ending, without a point
    BFilePanel(const char* title, const char* kind, const char* suffix);
    /// Closes it without an answer.
    ~BFilePanel();
    BFilePanel(const BFilePanel&) = delete;
    BFilePanel& operator=(const BFilePanel&) = delete;

    /// Opens the dialog, or brings the one that is open to the front.
    /// @param name    what the file is called unless the user says otherwise, without a folder
    /// @param above   the dialog goes with this window; may be null
    /// @param chosen  called once with the absolute path when the user saves; never when he cancels. It may delete the
    ///                panel
    void Show(const char* name, BWindow* above, std::function<void(const std::string& path)> chosen);
    bool IsShowing() const;

private:
    class Dialog;

    std::string fTitle;
    std::string fKind;
    std::string fSuffix;
    std::unique_ptr<Dialog> fDialog;
};
