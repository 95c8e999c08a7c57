// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/Alert.h"

#include <string>

/// Shows a notice with the button "OK" and returns; nobody hears of the answer. Main thread.
/// @param title  null for "Qel alert"
void ShowAlert(const std::string& text, alert_type kind, const char* title = nullptr);
