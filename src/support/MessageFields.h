// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Field.h"
#include "kits/application/Messenger.h"
#include "kits/support/Identity.h"

/// The fields of the program's own messages, as MessageCodes.h names them. The fields of a class's settings stand with
/// that class.

/// Coordinates in a chart may lie left of it and above it, as those of a caption wider than its chart do. Pixels.
inline constexpr float kFarthestInChart = 32767;

/// The receiver of samples, or the source of a taken chart.
inline const kits::Field<BMessenger> kMessengerField("Messenger");
/// The archive of a chart that goes to the desktop, or of a window that closes.
inline const kits::Field<BMessage> kArchiveField("Archive");

// A window that closes.

inline const kits::Field<void*> kWindowField("Window");
inline const kits::Field<std::string> kWindowNameField("Name", 0, 1 << 20);
/// The address of the owner's pointer to it.
inline const kits::Field<void*> kContainerField("Container");

// Between charts and their holder.

inline const kits::Field<BPoint> kCoordField("Coord", -kFarthestInChart, kFarthestInChart);
inline const kits::Field<float> kColumnField("Pos", 0, kFarthestInChart);
inline const kits::Field<void*> kSenderField("CView");
inline const kits::Field<BMessage> kWishField("Msg");

// Charts on the desktop.

/// At most this many identities of taken charts are remembered.
inline constexpr int32 kMostIdentities = 256;

/// Identifies a chart wherever it goes; B_REPLICANT_TAKEN has one for each chart that was taken.
inline const kits::Field<std::string> kIdentityField("Identity", 1, kits::Identities::kLongest, kits::Outside::kLeftOut,
                                                     kMostIdentities);
/// Identifies a request that is repeated; the store keeps the last ones.
inline const kits::Field<std::string> kRequestField("Request", 1, kits::Identities::kLongest, kits::Outside::kLeftOut,
                                                    kits::kMostNumber);
inline const kits::Field<bool> kRefusedField("Refused");
/// The top left corner on the screen.
inline const kits::Field<BPoint> kPlaceField("Where", -kits::kFarthestPlace, kits::kFarthestPlace);
inline const kits::Field<BPoint> kDistanceField("By", -kits::kFarthestPlace, kits::kFarthestPlace);
inline const kits::Field<bool> kBackField("Back");
