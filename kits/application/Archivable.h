// SPDX-License-Identifier: MIT
#pragma once

class BMessage;

/// Whether an archive is one of this class: one of its "class" strings is the name.
bool validate_instantiation(const BMessage* archive, const char* className);
