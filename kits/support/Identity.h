// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <string>

namespace kits {

/// Returns a unique name: 128 random bits as 32 hexadecimal digits. Any thread.
std::string NewIdentity();

/// The identities of performed requests, so that a repeated request is not performed again. Keeps as many as it was
/// made for, the newest ones. Not shared between threads.
class Identities {
public:
    /// A longer identity is not remembered, nor is an empty one.
    static constexpr std::size_t kLongest = 64;

    explicit Identities(std::size_t most)
        : fMost(most)
    {
    }

    bool Has(const std::string& identity) const;
    /// Remembers it as the newest one.
    void Add(const std::string& identity);
    /// The oldest first.
    const std::deque<std::string>& All() const { return fAll; }

private:
    std::size_t fMost;
    std::deque<std::string> fAll;
};

} // namespace kits
