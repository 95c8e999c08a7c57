// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// The words that the user types to find sources, in any order and case. A row fits if each word occurs in its name or
/// in that of its group. A plain value.
class SourceFilter {
public:
    /// How well a row fits, from worst to best: the fit of its worst word.
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

    /// @param name   of the row, as shown
    /// @param group  of the row's group; empty if it is in none
    Fit FitOf(const std::string& name, const std::string& group = {}) const;

    bool operator==(const SourceFilter&) const = default;

private:
    std::vector<std::string> fWords; ///< case-folded
};
