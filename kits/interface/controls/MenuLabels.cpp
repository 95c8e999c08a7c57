// SPDX-License-Identifier: MIT
#include "kits/interface/controls/MenuPart.h"

#include <cctype>
#include <set>

namespace {

bool IsPlain(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 && static_cast<unsigned char>(character) < 128;
}

/// Returns the place of the letter to underline, or npos.
std::size_t FindTrigger(const std::string& label, std::set<char>& taken)
{
    for (const bool wordsOnly : {true, false}) {
        for (std::size_t i = 0; i < label.size(); i++) {
            const bool wordBegins = i == 0 || label[i - 1] == ' ';
            if (!IsPlain(label[i]) || (wordsOnly && !wordBegins))
                continue;
            const char letter = static_cast<char>(std::tolower(static_cast<unsigned char>(label[i])));
            if (taken.insert(letter).second)
                return i;
        }
    }
    return std::string::npos;
}

} // namespace

namespace kits {

std::vector<std::string> WithTriggers(const std::vector<std::string>& labels)
{
    std::set<char> taken;
    std::vector<std::string> result;
    for (const std::string& label : labels) {
        const std::size_t trigger = FindTrigger(label, taken);
        std::string text;
        for (std::size_t i = 0; i < label.size(); i++) {
            if (i == trigger || label[i] == '&')
                text += '&';
            text += label[i];
        }
        result.push_back(std::move(text));
    }
    return result;
}

} // namespace kits
