// SPDX-License-Identifier: MIT
#pragma once

class BMessage;

/// True if one of the archive's "class" strings is this name.
bool validate_instantiation(const BMessage* archive, const char* className);
