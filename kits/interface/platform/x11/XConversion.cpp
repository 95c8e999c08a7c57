// SPDX-License-Identifier: MIT
#include "kits/interface/platform/x11/XConversion.h"

#include "kits/kernel/Bounds.h"

#include <utility>

namespace kits {

XConversion::XConversion(const Question& question, uint32 incremental, size_t limit, Port& port)
    : fQuestion(question)
    , fIncremental(incremental)
    , fLimit(limit)
    , fPort(port)
{
}

void XConversion::Answered(uint32 selection, uint32 target, uint32 property)
{
    if (fState != State::kAsked || selection != fQuestion.selection || target != fQuestion.target)
        return;
    if (property != fQuestion.property) {
        Refuse();
        return;
    }
    Piece piece = fPort.Take(property, fLimit);
    if (piece.type == 0 || !piece.isWhole) {
        Refuse();
    } else if (piece.type == fIncremental) {
        // Removing the property tells the owner to begin.
        fState = State::kPieces;
    } else {
        fState = State::kDone;
        fType = piece.type;
        fBytes = std::move(piece.bytes);
    }
}

void XConversion::Changed(uint32 property)
{
    if (fState != State::kPieces || property != fQuestion.property)
        return;
    const Piece piece = fPort.Take(property, fLimit - fBytes.size());
    if (!piece.isWhole || ++fPieces > bounds::kMostPieces) {
        Refuse();
        return;
    }
    // Reported once more than it was written.
    if (piece.type == 0)
        return;
    if (fType != 0 && piece.type != fType) {
        Refuse();
        return;
    }
    fType = piece.type;
    fBytes += piece.bytes;
    if (piece.bytes.empty())
        fState = State::kDone;
}

void XConversion::Refuse()
{
    fState = State::kRefused;
    fBytes = std::string();
}

} // namespace kits
