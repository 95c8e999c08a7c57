// SPDX-License-Identifier: MIT
#include "src/chart/DesktopCharts.h"

#include "src/prefs/store/Preferences.h"
#include "src/support/Qel.h"

bool HasDesktopCharts()
{
    const Preferences store(kDesktopSignature, false, true);
    return kReplicantField.IsIn(store);
}
