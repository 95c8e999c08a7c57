// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Returns the number with this many decimals and a point, whatever the language: "0.21".
std::string FixedPoint(double number, int decimals);
