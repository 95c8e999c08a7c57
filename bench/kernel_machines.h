// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// A recorded machine whose processors work: its `proc/stat` differs at every reading, so that nothing can be cached.
/// Written to a folder of its own, which the destructor removes.
class BusyMachine {
public:
    explicit BusyMachine(int processors);
    ~BusyMachine();
    BusyMachine(const BusyMachine&) = delete;
    BusyMachine& operator=(const BusyMachine&) = delete;

    [[nodiscard]] const std::string& Root() const { return fRoot; }
    /// Lets time pass: takes the next of some moments that were prepared.
    void Advance();

private:
    void Write(const std::string& name, const std::string& text) const;

    std::string fRoot;
    std::vector<std::string> fMoments;
    size_t fNext = 0;
    int fStat = -1;
};

/// Only the system calls that a reading of a machine needs, each file whole: the minimum cost of a reading.
class BareReads {
public:
    /// @param root  the folder of a recorded machine, or "" for this one
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
