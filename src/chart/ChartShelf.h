// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Shelf.h"
#include "kits/support/Identity.h"

class ChartViewHolder;

/// Takes charts that are dragged from the desktop into a holder. Belongs to the holder.
///
/// It remembers the identities of what it has taken, the last kMostTaken, and they are stored with the charts: after a
/// kill either both are there or neither. The application, which alone knows when they are stored, gets
/// B_REPLICANT_TAKEN with "Identity" and "Messenger", the source, for each of them, and one with all that were loaded.
class ChartShelf : public BShelf {
public:
    static constexpr size_t kMostTaken = 256;

    explicit ChartShelf(ChartViewHolder* holder);

    /// Whether it is a chart's archive and the holder has room.
    bool CanAddReplicant(const BMessage* archive) const override;
    bool AddReplicant(BMessage* archive, BPoint where, const std::string& identity, const BMessenger& source) override;

    /// Adds "Taken", in place of those that are there.
    void SaveTo(BMessage* into) const;
    void LoadFrom(const BMessage& from);

private:
    ChartViewHolder* fHolder;
    kits::Identities fTaken{kMostTaken};
};
