// SPDX-License-Identifier: MIT
// The constructor of BMessenger that looks among all teams.

#include "kits/application/Messenger.h"
#include "kits/application/delivery/PostOffice.h"
#include "kits/application/teams/TeamPort.h"

BMessenger::BMessenger(const char* signature, team_id team, status_t* result)
{
    status_t status = signature == nullptr ? B_BAD_VALUE : B_NAME_NOT_FOUND;
    if (signature != nullptr) {
        for (const kits::TeamFolder::Entry& entry : kits::TeamPort::Get().Find(signature)) {
            if (team >= 0 && kits::TeamIdOf(entry.team) != team)
                continue;
            const bool isThis = entry.team == kits::ThisTeam();
            fAddress = {entry.team, isThis ? kits::PostOffice::Get().Application() : kits::kApplicationToken};
            status = B_OK;
            break;
        }
    }
    if (result != nullptr)
        *result = status;
}
