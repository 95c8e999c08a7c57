// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

class BMessage;

/// Reads a translation as Qt Linguist writes it (.ts) into the message that kits/application/Language.h reads. Skips
/// sentences that are unfinished or no longer used.
/// @param error  describes the fault and its place, if the result is false
bool TranslationFromTs(std::string_view ts, BMessage* message, std::string* error);
