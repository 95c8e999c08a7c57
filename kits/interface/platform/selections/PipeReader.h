// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/FileDescriptor.h"

#include <QSocketNotifier>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace kits {

/// Reads a pipe to its end as data arrive, without waiting. Main thread. Destroying it ends the reading, even in its
/// own call.
class PipeReader {
public:
    /// @param descriptor  owned from here
    /// @param limit       more bytes are an error
    /// @param ended       called once, in a turn of the event loop: with all data, or with null after an error
    PipeReader(int descriptor, size_t limit, std::function<void(std::optional<std::string>)> ended);
    ~PipeReader();
    PipeReader(const PipeReader&) = delete;
    PipeReader& operator=(const PipeReader&) = delete;

private:
    void Read();
    void End(bool isWhole);

    const FileDescriptor fDescriptor;
    const size_t fLimit;
    std::function<void(std::optional<std::string>)> fEnded;
    std::string fBytes;
    QSocketNotifier* fNotifier;
};

} // namespace kits
