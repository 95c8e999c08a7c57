// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

class BWindow;

/// Asks the user where to save a file, with the file dialog of the user's desktop. It starts in the folder that was
/// chosen last, initially in the user's home. It asks the user before it replaces an existing file; a name without a
/// suffix gets the panel's suffix.
///
/// The panel stays open beside everything else until the user saves, cancels, or the panel or its window is destroyed;
/// it may be shown again after that. Main thread only.
class BFilePanel {
public:
    /// @param title   the title of the dialog, UTF-8
    /// @param kind    the kind of files, shown with the suffix: "PNG pictures"
    /// @param suffix  the suffix, without a point
    BFilePanel(const char* title, const char* kind, const char* suffix);
    /// Closes it without an answer.
    ~BFilePanel();
    BFilePanel(const BFilePanel&) = delete;
    BFilePanel& operator=(const BFilePanel&) = delete;

    /// Opens the dialog, or brings the open one to the front.
    /// @param name    the proposed name of the file, without a folder
    /// @param above   the dialog is destroyed with this window; may be null
    /// @param chosen  called once with the absolute path when the user saves; never if the user cancels. It may delete
    ///                the panel
    void Show(const char* name, BWindow* above, std::function<void(const std::string& path)> chosen);
    bool IsShowing() const;

private:
    class Dialog;

    std::string fTitle;
    std::string fKind;
    std::string fSuffix;
    std::unique_ptr<Dialog> fDialog;
};
