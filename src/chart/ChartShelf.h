#pragma once

#include "kits/interface/Shelf.h"

class ChartViewHolder;

/// Takes charts that are dragged from the desktop into a holder. Belongs to the holder.
class ChartShelf : public BShelf {
public:
    explicit ChartShelf(ChartViewHolder* holder);

    /// Whether it is a chart's archive and the holder has room.
    bool CanAddReplicant(const BMessage* archive) const override;
    bool AddReplicant(BMessage* archive, BPoint where) override;

private:
    ChartViewHolder* fHolder;
};
