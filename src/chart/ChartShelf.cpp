// SPDX-License-Identifier: MIT
#include "src/chart/ChartShelf.h"

#include "kits/application/AppDefs.h"
#include "kits/application/Application.h"
#include "kits/application/Archivable.h"
#include "kits/application/Message.h"
#include "kits/interface/Fields.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/MessageFields.h"
#include "src/support/Qel.h"

ChartShelf::ChartShelf(ChartViewHolder* holder)
    : BShelf(holder)
    , fHolder(holder)
{
}

bool ChartShelf::CanAddReplicant(const BMessage* archive) const
{
    return validate_instantiation(archive, "ChartView") && kits::kAddOnField.Get(*archive) == signature &&
           fHolder->CountCharts() < kMaxCharts;
}

bool ChartShelf::AddReplicant(BMessage* archive, BPoint, const std::string& identity, const BMessenger& source)
{
    if (!fTaken.Has(identity)) {
        if (!CanAddReplicant(archive))
            return false;
        // The layout sets its size.
        kits::kFrameField.Remove(archive);
        fHolder->AddChartView(new ChartView(archive));
        fHolder->Rerender();
        fTaken.Add(identity);
    }
    BMessage taken(B_REPLICANT_TAKEN);
    kIdentityField.Add(&taken, identity);
    kMessengerField.Add(&taken, source);
    be_app_messenger.SendMessage(&taken);
    return true;
}

void ChartShelf::SaveTo(BMessage* into) const
{
    kTakenField.Remove(into);
    for (const std::string& identity : fTaken.All())
        kTakenField.Add(into, identity);
}

void ChartShelf::LoadFrom(const BMessage& from)
{
    for (int32 i = 0; i < kTakenField.Count(from); i++)
        if (std::string identity; kTakenField.Find(from, &identity, i))
            fTaken.Add(identity);
    if (fTaken.All().empty())
        return;
    BMessage taken(B_REPLICANT_TAKEN);
    for (const std::string& one : fTaken.All())
        kIdentityField.Add(&taken, one);
    be_app_messenger.SendMessage(&taken);
}
