// SPDX-License-Identifier: MIT
#include "kits/support/Identity.h"

#include <algorithm>
#include <cstdio>
#include <random>

namespace kits {

std::string NewIdentity()
{
    std::random_device random;
    std::string identity;
    for (int i = 0; i < 4; i++) {
        char digits[9];
        std::snprintf(digits, sizeof(digits), "%08x", static_cast<unsigned>(random() & 0xFFFFFFFF));
        identity += digits;
    }
    return identity;
}

bool Identities::Has(const std::string& identity) const
{
    return std::find(fAll.begin(), fAll.end(), identity) != fAll.end();
}

void Identities::Add(const std::string& identity)
{
    if (identity.empty() || identity.size() > kLongest || Has(identity))
        return;
    fAll.push_back(identity);
    if (fAll.size() > fMost)
        fAll.pop_front();
}

} // namespace kits
