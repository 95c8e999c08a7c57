// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Types.h"

#include <optional>
#include <string>

namespace kits {

/// Counts the processes of a machine. The link count of `/proc`, which takes one system call, is their number plus a
/// constant. Counting the entries once gives the constant.
class ProcessCounter {
public:
    /// @param folder      the `/proc` of the machine
    /// @param isRecorded  true: counts the entries each time, because the link count of a plain folder is another
    ProcessCounter(std::string folder, bool isRecorded);

    /// Opens the folder if it could not be opened before, and measures the constant.
    void Calibrate();
    /// Returns the number of processes; nothing if it is unknown. Call Calibrate before.
    [[nodiscard]] std::optional<int64> Count();

private:
    [[nodiscard]] std::optional<int64> LinkCount() const;
    [[nodiscard]] std::optional<int64> CountEntries() const;

    const std::string fPath;
    const bool fIsRecorded;
    FileDescriptor fFolder;
    std::optional<int64> fBesidesProcesses;
};

} // namespace kits
