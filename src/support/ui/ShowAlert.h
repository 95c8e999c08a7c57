// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Invoker.h"
#include "kits/interface/Alert.h"

#include <memory>
#include <string>

/// Shows a notice with the button "OK" and returns without waiting for the answer. Main thread.
/// @param title     null for "Qel alert"
/// @param answered  invoked when the notice has been answered; null for none
/// @return the alert, valid until it has been answered
BMessenger ShowAlert(const std::string& text, alert_type kind, const char* title = nullptr,
                     std::unique_ptr<BInvoker> answered = nullptr);
