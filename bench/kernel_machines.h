// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// A recorded machine whose processors work: its `proc/stat` is another one at every reading, so that nothing can be
/// learned by heart. Written to a folder of its own, removed at the end.
class BusyMachine {
public:
    explicit BusyMachine(int processors);
    ~BusyMachine();
    BusyMachine(const BusyMachine&) = delete;
    BusyMachine& operator=(const BusyMachine&) = delete;

    [[nodiscard]] const std::string& Root() const { return fRoot; }
    /// Time passes: the next of some moments that were written down before.
    void Advance();

private:
    void Write(const std::string& name, const std::string& text) const;

    std::string fRoot;
    std::vector<std::string> fMoments;
    size_t fNext = 0;
    int fStat = -1;
};

/// Nothing but the system calls that a reading of a machine needs, each file whole: what a reading costs at least.
class BareReads {
public:
    /// @param root  of a recorded machine, or "" for this one
    explicit BareReads(const std::string& root);
    ~BareReads();
    BareReads(const BareReads&) = delete;
    BareReads& operator=(const BareReads&) = delete;

    void Read();

private:
    const bool fIsRecorded;
    std::vector<int> fFiles;
    int fFolder;
    std::vector<char> fBuffer;
};
