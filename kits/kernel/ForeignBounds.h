#pragma once

#include "kits/kernel/Bounds.h"

#include <chrono>
#include <cstddef>

/// The part of the table of limits that concerns the data of other programs on the display; read as Bounds.h. It stands
/// apart because only the interface kit needs it.
namespace kits::bounds {

// What other programs own or drag: the clipboard, the primary selection, drags.

/// For all forms of it and all answers together, of a paste or a drop. Then it is given up, with a beep.
inline constexpr auto kLongestFetch = std::chrono::seconds(1);
/// How long the program that keeps the clipboard may take to take it over from one that ends. Then it is given up.
inline constexpr auto kLongestHandover = std::chrono::seconds(1);
/// Of it in one form: messages as above, texts, colours. ignore: the next form is tried
inline constexpr size_t kMostForeignText = kMiB;
inline constexpr size_t kMostForeignColor = 64;
/// Forms that are read of what an owner says it has. As an owner that does not say: all are tried.
inline constexpr size_t kMostForms = 1024;
/// Pieces that an answer comes in. ignore: the next form is tried
inline constexpr int kMostPieces = 8192;
/// Fetches under way. refuse, with a beep
inline constexpr size_t kMostFetches = 4;
/// How often a program is asked for what it drags, while it is over one window.
inline constexpr int kMostAskedOfADrag = 8;

} // namespace kits::bounds
