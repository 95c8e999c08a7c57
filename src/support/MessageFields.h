// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/application/Messenger.h"
#include "kits/support/Identity.h"

/// The fields of the program's own messages, which MessageCodes.h lists. A class declares the fields of its settings
/// itself.

/// The limit of coordinates in a chart, in pixels. They may be negative: a caption that is wider than its chart begins
/// left of it.
inline constexpr float kFarthestInChart = 32767;

/// The receiver of samples, or the source from which a chart was taken.
inline const kits::Field<BMessenger> kMessengerField("Messenger");
/// The archive of a chart that goes to the desktop, or of a window that closes.
inline const kits::Field<BMessage> kArchiveField("Archive");

// MSG_WINDOW_CLOSED.

inline const kits::Field<void*> kWindowField("Window");
inline const kits::Field<std::string> kWindowNameField("Name", 0, 1 << 20);
/// The address of the pointer that the owner keeps to its window.
inline const kits::Field<void*> kContainerField("Container");

// Messages between charts and their holder.

inline const kits::Field<BPoint> kCoordField("Coord", -kFarthestInChart, kFarthestInChart);
inline const kits::Field<float> kColumnField("Pos", 0, kFarthestInChart);
inline const kits::Field<void*> kSenderField("CView");
inline const kits::Field<BMessage> kWishField("Msg");

// Charts on the desktop.

/// The maximum number of identities of taken charts that are remembered.
inline constexpr int32 kMostIdentities = 256;

/// Identifies a chart wherever it goes; B_REPLICANT_TAKEN has one for each chart that was taken.
inline const kits::Field<std::string> kIdentityField("Identity", 1, kits::Identities::kLongest, kits::Outside::kLeftOut,
                                                     kMostIdentities);
/// Identifies a request, which may be sent several times but is performed once; the store keeps the last ones.
inline const kits::Field<std::string> kRequestField("Request", 1, kits::Identities::kLongest, kits::Outside::kLeftOut,
                                                    kits::kMostNumber);
inline const kits::Field<bool> kRefusedField("Refused");
/// The top left corner on the screen.
inline const kits::Field<BPoint> kPlaceField("Where", -kits::kFarthestPlace, kits::kFarthestPlace);
inline const kits::Field<BPoint> kDistanceField("By", -kits::kFarthestPlace, kits::kFarthestPlace);
inline const kits::Field<bool> kBackField("Back");
