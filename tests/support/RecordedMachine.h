// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Returns the folder of a machine that is recorded with the tests.
std::filesystem::path MachineFolder(const std::string& name);

/// A machine in a folder of its own, which a test may change; the destructor removes it.
class RecordedMachine {
public:
    /// Copies a machine that is recorded with the tests.
    explicit RecordedMachine(const std::string& name);
    /// Makes a machine with this many processors and nothing else.
    explicit RecordedMachine(int processors);
    ~RecordedMachine();
    RecordedMachine(const RecordedMachine&) = delete;
    RecordedMachine& operator=(const RecordedMachine&) = delete;

    [[nodiscard]] const char* Root() const { return fRoot.c_str(); }

    /// Writes a file in place, so that a reader that has it open sees it.
    void Write(const std::string& name, const std::string& text) const;
    [[nodiscard]] std::string Text(const std::string& name) const;
    void Remove(const std::string& name) const;
    /// Replaces one text in a file by another, in place.
    void Replace(const std::string& name, const std::string& from, const std::string& to) const;

    /// Writes `proc/stat` with the user time of each processor, in ticks; negative for one that is offline.
    void WriteProcessors(const std::vector<long long>& userTicks) const;

private:
    const std::filesystem::path fRoot;
};
