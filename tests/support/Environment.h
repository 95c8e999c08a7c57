// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>

/// Restores this process's variables when the test ends.
class EnvironmentGuard {
public:
    EnvironmentGuard(std::initializer_list<const char*> names)
    {
        for (const char* name : names) {
            const char* const value = std::getenv(name);
            fBefore[name] = value != nullptr ? std::optional<std::string>(value) : std::nullopt;
        }
    }
    ~EnvironmentGuard()
    {
        for (const auto& [name, value] : fBefore)
            if (value)
                setenv(name.c_str(), value->c_str(), 1);
            else
                unsetenv(name.c_str());
    }
    EnvironmentGuard(const EnvironmentGuard&) = delete;
    EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

private:
    std::map<std::string, std::optional<std::string>> fBefore;
};
