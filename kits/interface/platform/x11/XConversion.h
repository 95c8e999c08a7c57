// SPDX-License-Identifier: MIT
#pragma once

#include "kits/kernel/Types.h"

#include <cstddef>
#include <string>

namespace kits {

/// One question to the owner of a selection of the X server, from the request to the last piece of the answer: the
/// owner writes the data to a property of our window, as a whole or, if they are long, in pieces, the next one each
/// time after we have removed the last. Atoms are the server's.
///
/// It judges each report and reads the next piece. The display is behind Port, so that tests can play every behaviour
/// of an owner. Main thread.
class XConversion {
public:
    /// The content of a property.
    struct Piece {
        uint32 type = 0; ///< 0: there was no such property
        bool isWhole = true;
        std::string bytes; ///< empty if they are not complete
    };

    /// Our window.
    class Port {
    public:
        virtual ~Port() = default;
        /// Reads the property and removes it. Reads no property of more than `most` bytes: then the piece is not
        /// complete.
        virtual Piece Take(uint32 property, size_t most) = 0;
    };

    struct Question {
        uint32 selection = 0;
        uint32 target = 0;
        uint32 property = 0; ///< of our window, for this question only
    };

    enum class State {
        kAsked,  ///< nothing has arrived
        kPieces, ///< the data arrive in pieces
        kDone,   ///< Type() and Bytes() are the answer
        kRefused ///< no answer, or one that is too long
    };

    /// @param incremental  the type that announces pieces
    /// @param port         not owned
    XConversion(const Question& question, uint32 incremental, size_t limit, Port& port);

    /// The owner says that it has answered.
    /// @param property  0: it refuses
    void Answered(uint32 selection, uint32 target, uint32 property);
    /// The property has a new value.
    void Changed(uint32 property);

    State Current() const { return fState; }
    bool IsOver() const { return fState == State::kDone || fState == State::kRefused; }
    const Question& Asked() const { return fQuestion; }
    uint32 Type() const { return fType; }
    const std::string& Bytes() const { return fBytes; }

private:
    void Refuse();

    const Question fQuestion;
    const uint32 fIncremental;
    const size_t fLimit;
    Port& fPort;
    State fState = State::kAsked;
    int fPieces = 0;
    uint32 fType = 0;
    std::string fBytes;
};

} // namespace kits
