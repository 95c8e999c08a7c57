// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace test {

/// A runtime folder of the test's own, which replaces the user's while the object lives. So the test finds no teams but
/// those that it starts.
class RuntimeFolder {
public:
    /// @param leaf  a subfolder to use instead, to make the path longer; empty for none
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
