// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"
#include "kits/kernel/record/ProcFile.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kits {

/// The largest possible number of each kind, at least 1.
struct MachineLimits {
    int64 teams = 1;
    int64 threads = 1;
    int64 sems = 1;
    int64 ports = 1;
};

/// Reads the limits of this user's processes, threads, semaphores and sockets.
class LimitReader {
public:
    /// @param root  the machine's root folder, ends with a slash
    explicit LimitReader(const std::string& root);

    /// Finds the control groups of this process, which may have been moved, and opens files that could not be opened
    /// before. Allocates only if they have changed.
    void FindFiles();
    /// Reads all limits; one that cannot be read keeps its value.
    void Read(MachineLimits* limits);

private:
    void FindGroups();

    /// A limit that keeps its last number while its file cannot be read.
    struct Kept {
        ProcFile file;
        std::optional<uint64> number{};

        std::optional<uint64> Read();
    };

    const std::string fRoot;
    std::array<char, 4096> fBuffer; ///< shared by all files
    Kept fPidMax;
    Kept fThreadsMax;
    ProcFile fFileMax;
    ProcFile fSem;
    ProcFile fProcessLimits;
    ProcFile fStatus;
    ProcFile fGroups;
    std::string fLastGroups;        ///< the text of fGroups from which fPidsMax was made
    std::vector<ProcFile> fPidsMax; ///< in the groups of this process that may have a limit, the innermost first
};

} // namespace kits
