#include "src/chart/ChartShelf.h"

#include "kits/application/Archivable.h"
#include "kits/application/Message.h"
#include "src/chart/ChartSteps.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"
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

bool ChartShelf::AddReplicant(BMessage* archive, BPoint)
{
    if (!CanAddReplicant(archive))
        return false;
    // The layout sizes it.
    archive->RemoveName("_frame");
    fHolder->AddChartView(new ChartView(archive));
    fHolder->Rerender();
    return true;
}
