// SPDX-License-Identifier: MIT
#include "src/sampling/SourceFilter.h"

#include "kits/application/TextFolding.h"

#include <algorithm>
#include <sstream>

namespace {

/// Bytes of letters beyond ASCII are parts of words too.
bool IsPartOfWord(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

SourceFilter::Fit FitOfWord(const std::string& word, const std::string& text)
{
    SourceFilter::Fit best = SourceFilter::kNone;
    for (size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const size_t end = at + word.size();
        const bool starts = at == 0 || !IsPartOfWord(text[at - 1]);
        const bool ends = end == text.size() || !IsPartOfWord(text[end]);
        best = std::max(best, !starts ? SourceFilter::kInside
                              : ends  ? SourceFilter::kWholeWord
                                      : SourceFilter::kWordStart);
    }
    return best;
}

} // namespace

SourceFilter::SourceFilter(const std::string& text)
{
    std::istringstream words(kits::FoldText(text));
    for (std::string word; words >> word;)
        fWords.push_back(word);
}

SourceFilter::Fit SourceFilter::FitOf(const std::string& name, const std::string& group) const
{
    const std::string foldedName = kits::FoldText(name);
    const std::string foldedGroup = kits::FoldText(group);
    Fit worst = kWholeWord;
    for (const std::string& word : fWords)
        worst = std::min(worst, std::max(FitOfWord(word, foldedName), FitOfWord(word, foldedGroup)));
    return worst;
}
