// SPDX-License-Identifier: MIT
#include "src/desktop/ReplicantClasses.h"

#include "kits/application/Archivable.h"
#include "kits/application/Message.h"
#include "src/chart/ChartView.h"
#include "src/support/Qel.h"

namespace {

bool Refuse(std::string* why, const char* words)
{
    if (why != nullptr)
        *why = words;
    return false;
}

} // namespace

bool IsReplicantArchive(const BMessage& archive, std::string* why)
{
    if (kits::kAddOnField.Get(archive) != signature)
        return Refuse(why, "it is not from Qel");
    if (!validate_instantiation(&archive, "ChartView"))
        return Refuse(why, "it is not a chart");
    if (archive.FlattenedSize() > kLongestArchive)
        return Refuse(why, "it is too large");
    return true;
}

std::unique_ptr<BView> InstantiateReplicant(BMessage* archive, std::string* why)
{
    if (!IsReplicantArchive(*archive, why))
        return nullptr;
    std::unique_ptr<BView> view(ChartView::Instantiate(archive));
    if (view == nullptr)
        Refuse(why, "it is broken");
    return view;
}
