// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/platform/x11/XSettings.h"

#include <string>
#include <vector>

/// Settings as a daemon writes them.
class WrittenSettings {
public:
    explicit WrittenSettings(bool highFirst = false)
        : fHighFirst(highFirst)
    {
        fBytes = {static_cast<uint8>(highFirst ? 1 : 0), 0, 0, 0};
        Number(7, 4);
        Number(0, 4);
    }

    WrittenSettings& Integer(const std::string& name, int32 value)
    {
        Begin(0, name);
        Number(static_cast<uint32>(value), 4);
        return *this;
    }
    WrittenSettings& Text(const std::string& name, const std::string& value)
    {
        Begin(1, name);
        Number(static_cast<uint32>(value.size()), 4);
        Padded(value);
        return *this;
    }
    WrittenSettings& Color(const std::string& name)
    {
        Begin(2, name);
        Number(1, 4);
        Number(2, 4);
        return *this;
    }
    WrittenSettings& OfType(uint8 type, const std::string& name)
    {
        Begin(type, name);
        return *this;
    }

    const std::vector<uint8>& Bytes() const { return fBytes; }
    kits::XSettings Read() const { return kits::XSettings(fBytes); }

private:
    void Begin(uint8 type, const std::string& name)
    {
        fCount++;
        for (uint32 i = 0; i < 4; i++)
            fBytes[8 + i] = static_cast<uint8>(fCount >> (fHighFirst ? 24 - 8 * i : 8 * i));
        fBytes.insert(fBytes.end(), {type, 0});
        Number(static_cast<uint32>(name.size()), 2);
        Padded(name);
        Number(3, 4);
    }
    void Number(uint32 value, uint32 size)
    {
        for (uint32 i = 0; i < size; i++)
            fBytes.push_back(static_cast<uint8>(value >> 8 * (fHighFirst ? size - 1 - i : i)));
    }
    void Padded(const std::string& text)
    {
        fBytes.insert(fBytes.end(), text.begin(), text.end());
        while (fBytes.size() % 4 != 0)
            fBytes.push_back(0);
    }

    bool fHighFirst;
    uint32 fCount = 0;
    std::vector<uint8> fBytes;
};
