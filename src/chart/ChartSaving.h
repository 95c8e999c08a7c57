// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

class BFilePanel;
class BWindow;
class FireAndForgetThread;

/// Saves what a chart shows in a file that the user chooses. The file is written in the background, for a disk may take
/// its time; an alert says when that fails. Main thread.
class ChartSaving {
public:
    ChartSaving();
    /// Closes the panel without an answer, and waits for the file that is being written.
    ~ChartSaving();
    ChartSaving(const ChartSaving&) = delete;
    ChartSaving& operator=(const ChartSaving&) = delete;

    /// Asks the user for a file, in a panel that stays open beside everything else.
    /// @param title   of the panel
    /// @param kind    what such files are: "PNG pictures"
    /// @param name    what the file is called unless the user says otherwise, with its ending
    /// @param window  the panel goes with it
    /// @param bytes   makes what is saved, when the user has chosen
    void Ask(const char* title, const char* kind, const std::string& name, BWindow* window,
             std::function<std::string()> bytes);

    /// Writes a file. Without bytes, or without a thread, it beeps.
    /// @param path  absolute
    void Save(const std::string& path, std::string bytes);
    /// Waits for the file that is being written.
    void Finish();

private:
    std::unique_ptr<BFilePanel> fPanel; // the last one that was opened
    std::unique_ptr<FireAndForgetThread> fThread;
};
