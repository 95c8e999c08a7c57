// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

/// The user's language for the program's texts. The program's own texts are English; a translation is a resource
/// "Language.de" (type B_ANY_TYPE) that is linked into the executable: a message with strings "source" and "text", one
/// pair for each sentence. Numbers, files and output for other programs are never translated.
namespace kits {

/// The languages that the environment asks for, best first: those of LANGUAGE, or else of the first of LC_ALL,
/// LC_MESSAGES and LANG that is set. "de_AT.UTF-8" asks for "de_AT" and "de". Nothing follows English or "C", and a
/// locale that is exactly "C" or "POSIX" asks for nothing, whatever LANGUAGE says.
std::vector<std::string> WantedLanguages();

/// Selects the first wanted language that has a translation, or none. Called once, before the first Translate(), on
/// the main thread.
void UseWantedLanguage();

/// The selected language: "" for the program's own, else for example "de".
const char* CurrentLanguage();

/// The text in the user's language; the text itself when there is no translation. Any thread.
/// @return valid as long as the process lives if @p text is
const char* Translate(const char* text);

/// Returns a text in which "%1" to "%9" are replaced by the values.
std::string Filled(const char* text, std::initializer_list<std::string> values);

} // namespace kits
