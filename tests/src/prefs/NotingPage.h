// SPDX-License-Identifier: MIT
#pragma once

#include "kits/application/Message.h"
#include "src/prefs/PrefsTab.h"
#include "src/support/MessageCodes.h"

#include <string>

/// A page that records the calls to it.
class NotingPage : public PrefsTab {
public:
    /// @param name     also the name of the field that it puts into drags
    /// @param carries  whether its settings can be dragged
    explicit NotingPage(const char* name, bool carries = true)
        : PrefsTab(name)
        , fCarries(carries)
    {
    }

    void Rerender() override
    {
        PrefsTab::Rerender();
        rerenders++;
    }
    void GetState() override { states++; }
    void Revert() override { reverts++; }
    void ForgetModel() override { forgotten++; }
    bool SavePrefsForDD(BMessage* message) override
    {
        if (!fCarries)
            return false;
        message->what = MSG_PREFS_DROP;
        message->AddInt32(Name(), 1);
        return true;
    }
    void GetMinimumSize(float* width, float* height) override
    {
        *width = minimumSize.x;
        *height = minimumSize.y;
    }

    int rerenders = 0;
    int states = 0;
    int reverts = 0;
    int forgotten = 0;
    BPoint minimumSize;

private:
    bool fCarries;
};
