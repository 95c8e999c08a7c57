// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

class BFilePanel;
class BWindow;
class FireAndForgetThread;

/// Saves a chart's contents in a file that the user chooses. A thread in the background writes the file, for a disk may
/// be slow; an alert reports a failure. Main thread only.
class ChartSaving {
public:
    ChartSaving();
    /// Closes the panel without an answer, and waits until the file is written.
    ~ChartSaving();
    ChartSaving(const ChartSaving&) = delete;
    ChartSaving& operator=(const ChartSaving&) = delete;

    /// Asks the user for a file, in a panel that leaves other windows usable.
    /// @param title   of the panel
    /// @param kind    describes such files: "PNG pictures"
    /// @param name    the file's proposed name, with its extension
    /// @param window  the panel closes with it
    /// @param bytes   makes the contents after the user has chosen
    void Ask(const char* title, const char* kind, const std::string& name, BWindow* window,
             std::function<std::string()> bytes);

    /// Writes a file. Beeps when there are no bytes or no thread can be started.
    /// @param path  absolute
    void Save(const std::string& path, std::string bytes);
    /// Waits until the file is written.
    void Finish();

private:
    std::unique_ptr<BFilePanel> fPanel; // the panel opened last
    std::unique_ptr<FireAndForgetThread> fThread;
};
