// SPDX-License-Identifier: MIT
#include "kits/application/Language.h"

#include "kits/application/Message.h"
#include "kits/storage/Resources.h"
#include "kits/support/TypeConstants.h"

#include <cstdlib>
#include <memory>
#include <string_view>
#include <unordered_map>

namespace kits {

namespace {

struct Translation {
    std::string language;
    std::unordered_map<std::string_view, const char*> texts; ///< owned by the message
    BMessage message;
};

/// Null for the program's own language. Set once and kept, so that the results of Translate() stay valid.
const Translation* sTranslation = nullptr;

std::string_view Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// @return false for a language that needs no translation
bool Add(std::vector<std::string>* languages, std::string_view locale)
{
    const std::string name(locale.substr(0, locale.find_first_of(".@")));
    const std::string language = name.substr(0, name.find('_'));
    if (language == "en" || language == "C" || language == "POSIX")
        return false;
    if (language.empty() || name.find('/') != std::string::npos)
        return true;
    languages->push_back(name);
    if (name != language)
        languages->push_back(language);
    return true;
}

const Translation* Load(const std::string& language)
{
    size_t size = 0;
    const void* bytes = BResources().LoadResource(B_ANY_TYPE, ("Language." + language).c_str(), &size);
    auto translation = std::make_unique<Translation>();
    if (bytes == nullptr ||
        translation->message.Unflatten(static_cast<const char*>(bytes), static_cast<ssize_t>(size)) != B_OK)
        return nullptr;
    translation->language = language;
    const char* source = nullptr;
    const char* text = nullptr;
    for (int32 i = 0; translation->message.FindString("source", &source, i) == B_OK &&
                      translation->message.FindString("text", &text, i) == B_OK;
         i++)
        translation->texts.emplace(source, text);
    return translation.release();
}

} // namespace

std::vector<std::string> WantedLanguages()
{
    std::string_view locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (locale.empty())
            locale = Variable(name);
    std::vector<std::string> languages;
    if (locale.empty() || locale == "C" || locale == "POSIX")
        return languages;
    std::string_view list = Variable("LANGUAGE");
    if (list.empty())
        list = locale;
    while (!list.empty()) {
        const size_t end = list.find(':');
        if (!Add(&languages, list.substr(0, end)))
            break;
        list = end == std::string_view::npos ? "" : list.substr(end + 1);
    }
    return languages;
}

void UseWantedLanguage()
{
    for (const std::string& language : WantedLanguages()) {
        sTranslation = Load(language);
        if (sTranslation != nullptr)
            return;
    }
}

const char* CurrentLanguage()
{
    return sTranslation != nullptr ? sTranslation->language.c_str() : "";
}

const char* Translate(const char* text)
{
    if (sTranslation == nullptr || text == nullptr)
        return text;
    const auto found = sTranslation->texts.find(text);
    return found != sTranslation->texts.end() ? found->second : text;
}

std::string Filled(const char* text, std::initializer_list<std::string> values)
{
    std::string filled;
    for (; *text != '\0'; text++) {
        const auto index = static_cast<size_t>(text[0] == '%' ? text[1] - '1' : -1);
        if (index < values.size()) {
            filled += values.begin()[index];
            text++;
        } else {
            filled += *text;
        }
    }
    return filled;
}

} // namespace kits
