// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/selections/SelectionFetch.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kits {

/// The fetches under way, each with its deadline. Main thread, with the interface lock held.
namespace Fetches {

/// Fetches in the first of the wanted forms that can be used, within bounds::kLongestFetch.
/// @param ended  called once, possibly in this call; refers to others by token
/// @return a number to give it up with, 0 if it is over already
uint64_t Start(std::unique_ptr<SelectionSource> source, std::vector<SelectionForm> wanted, SelectionFetch::Use use,
               std::function<void(SelectionFetch::State)> ended);
/// Nothing is called any more. Nothing happens for a fetch that is over.
void Cancel(uint64_t fetch);

/// The forms of a text, the preferred one first.
std::vector<SelectionForm> TextForms();
/// Decodes a text of such a form, in UTF-8; bytes that are not UTF-8 are read as Latin-1.
std::string TextOf(const std::string& data);

/// Cancels all fetches.
void CancelAll();

} // namespace Fetches

} // namespace kits
