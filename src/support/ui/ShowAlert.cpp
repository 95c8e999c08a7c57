// SPDX-License-Identifier: MIT
#include "src/support/ui/ShowAlert.h"

#include "src/support/Tr.h"

BMessenger ShowAlert(const std::string& text, alert_type kind, const char* title, std::unique_ptr<BInvoker> answered)
{
    // It deletes itself when it has been answered.
    auto* alert = new BAlert(title != nullptr ? title : Tr("Qel alert"), text.c_str(), Tr("OK"), nullptr, nullptr,
                             B_WIDTH_AS_USUAL, kind);
    BMessenger shown(alert);
    alert->Go(answered.release());
    return shown;
}
