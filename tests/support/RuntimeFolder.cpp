// SPDX-License-Identifier: MIT
#include "tests/support/RuntimeFolder.h"

#include "kits/application/teams/TeamPort.h"
#include "tests/support/BoundProcess.h"

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

namespace test {

RuntimeFolder::RuntimeFolder(const std::string& leaf)
    : fWasSet(getenv("XDG_RUNTIME_DIR") != nullptr)
{
    kits::TeamPort::Get().Close();
    NameTest();
    fBefore = fWasSet ? getenv("XDG_RUNTIME_DIR") : "";
    char name[] = "/tmp/kits-runtime-XXXXXX";
    fRoot = fPath = mkdtemp(name);
    if (!leaf.empty()) {
        fPath += "/" + leaf;
        mkdir(fPath.c_str(), 0700);
    }
    setenv("XDG_RUNTIME_DIR", fPath.c_str(), 1);
}

RuntimeFolder::~RuntimeFolder()
{
    kits::TeamPort::Get().Close();
    if (fWasSet)
        setenv("XDG_RUNTIME_DIR", fBefore.c_str(), 1);
    else
        unsetenv("XDG_RUNTIME_DIR");
    std::error_code error;
    std::filesystem::remove_all(fRoot, error);
}

} // namespace test
