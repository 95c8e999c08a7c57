// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "kits/application/teams/Frame.h"

#include <random>
#include <string>
#include <vector>

/// Mutates frames that our programs have sent into frames that none of them would send. The same seed makes the same
/// frames.
class Mutator {
public:
    struct Made {
        std::string bytes; ///< including the length in front
        bool isGood;       ///< the receiver may believe a part of it; otherwise it closes the connection
    };

    /// @param recorded  frames with their lengths, as they arrived on a connection
    /// @param self      the address for answers, used now and then
    Mutator(std::string_view recorded, kits::Address self, uint32 seed);

    Made Next();

private:
    struct Recorded {
        kits::MessageFrame frame;
        BMessage message;
    };

    int Below(int end) { return static_cast<int>(fRandom() % static_cast<unsigned>(end)); }
    bool OneIn(int count) { return Below(count) == 0; }
    uint32 Code();
    /// Returns a value of this many bytes that somebody may have forgotten to check.
    std::string Value(size_t size);
    void ChangeFields(BMessage* message, int depth);
    void AddField(BMessage* message, const char* name, type_code type);
    void ChangeFrame(kits::MessageFrame* frame);
    void ChangeBytes(std::string* bytes);
    std::string MessageFrame();

    std::mt19937 fRandom;
    const kits::Address fSelf;
    std::vector<Recorded> fRecorded;
    std::vector<std::string> fNames; ///< of fields
};
