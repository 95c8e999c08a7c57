// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace test {

/// A runtime folder of the user's that only the test has, in place of the real one while it lives. Other teams are not
/// found then, but those that the test starts.
class RuntimeFolder {
public:
    /// @param leaf  a folder in it to use instead, to make the path longer; empty for none
    explicit RuntimeFolder(const std::string& leaf = "");
    ~RuntimeFolder();
    RuntimeFolder(const RuntimeFolder&) = delete;
    RuntimeFolder& operator=(const RuntimeFolder&) = delete;

    const std::string& Path() const { return fPath; }

private:
    std::string fRoot;
    std::string fPath;
    std::string fBefore;
    bool fWasSet;
};

} // namespace test
