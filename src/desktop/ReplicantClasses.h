// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Bounds.h"

#include <memory>
#include <string>

class BMessage;
class BView;

/// The views that may stand on the desktop, by the names in their archives. An archive may come from any program.

/// The longest archive, in bytes.
inline constexpr long kLongestArchive = kits::bounds::kMostArchive;

/// Makes the view of an archive.
/// @param archive  "add_on" is the application's signature, "class" that of the view; its "_frame" is replaced
/// @param why      if not null, receives a few words on a null result
/// @return null if the archive is not of a view that may stand on the desktop
std::unique_ptr<BView> InstantiateReplicant(BMessage* archive, std::string* why);

/// Returns whether it is an archive of one of these views, without making the view.
bool IsReplicantArchive(const BMessage& archive, std::string* why);
