// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Returns the number with this many decimals and a point, whatever the language: "0.21".
std::string FixedPoint(double number, int decimals);

/// Returns a finite number with up to six significant digits, likewise with a point: "0.123457", "1e-07".
std::string SixDigits(double number);
