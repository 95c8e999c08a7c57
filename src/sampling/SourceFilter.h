// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// What the user types to find sources: words, in any order and case. A row fits if each of them occurs in its name or
/// in that of its group. A plain value.
class SourceFilter {
public:
    /// How a row fits, from worst to best; that of the word that fits worst.
    enum Fit {
        kNone,
        kInside,    ///< somewhere in a word: "25" in "CPU 125"
        kWordStart, ///< "mem" in "Used memory"
        kWholeWord  ///< "25" in "CPU 25"
    };

    SourceFilter() = default;
    /// @param text  UTF-8
    explicit SourceFilter(const std::string& text);

    /// True if there are no words; then every row fits.
    bool IsEmpty() const { return fWords.empty(); }

    /// @param name   of the row, as it is shown
    /// @param group  of the group that it stands in; empty if it stands in none
    Fit FitOf(const std::string& name, const std::string& group = {}) const;

    bool operator==(const SourceFilter&) const = default;

private:
    std::vector<std::string> fWords; ///< folded
};
