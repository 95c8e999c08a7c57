// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"
#include "kits/kernel/Types.h"

#include <optional>
#include <string>

namespace kits {

/// Counts the processes of a machine. The link count of `/proc` is their number plus a constant, which is one system
/// call however many there are; counting the entries tells the constant.
class ProcessCounter {
public:
    /// @param folder      the `/proc` of the machine
    /// @param isRecorded  its link count says nothing: every counting goes through the entries
    ProcessCounter(std::string folder, bool isRecorded);

    /// Tries again if the folder could not be opened, and measures the constant.
    void Calibrate();
    /// Processes now; nothing if that cannot be told. Needs a Calibrate before.
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
