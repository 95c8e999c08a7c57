// SPDX-License-Identifier: MIT
#include "src/chart/ChartShelf.h"

#include "kits/application/AppDefs.h"
#include "kits/application/Application.h"
#include "kits/application/Archivable.h"
#include "kits/application/Message.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
#include "src/support/FieldRanges.h"
#include "src/support/Qel.h"

#include <cstring>

ChartShelf::ChartShelf(ChartViewHolder* holder)
    : BShelf(holder)
    , fHolder(holder)
{
}

bool ChartShelf::CanAddReplicant(const BMessage* archive) const
{
    const char* program = nullptr;
    return validate_instantiation(archive, "ChartView") && archive->FindString("add_on", &program) == B_OK &&
           std::strcmp(program, signature) == 0 && fHolder->CountCharts() < kMaxCharts;
}

bool ChartShelf::AddReplicant(BMessage* archive, BPoint, const std::string& identity, const BMessenger& source)
{
    if (!fTaken.Has(identity)) {
        if (!CanAddReplicant(archive))
            return false;
        // The layout sets its size.
        archive->RemoveName("_frame");
        fHolder->AddChartView(new ChartView(archive));
        fHolder->Rerender();
        fTaken.Add(identity);
    }
    BMessage taken(B_REPLICANT_TAKEN);
    taken.AddString("Identity", identity);
    taken.AddMessenger("Messenger", source);
    be_app_messenger.SendMessage(&taken);
    return true;
}

void ChartShelf::SaveTo(BMessage* into) const
{
    into->RemoveName("Taken");
    for (const std::string& identity : fTaken.All())
        into->AddString("Taken", identity);
}

void ChartShelf::LoadFrom(const BMessage& from)
{
    const char* identity = nullptr;
    for (int32 i = 0; from.FindString("Taken", i, &identity) == B_OK; i++)
        fTaken.Add(identity);
    if (fTaken.All().empty())
        return;
    BMessage taken(B_REPLICANT_TAKEN);
    for (const std::string& one : fTaken.All())
        taken.AddString("Identity", one);
    be_app_messenger.SendMessage(&taken);
}
