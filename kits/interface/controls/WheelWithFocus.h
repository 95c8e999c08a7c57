// SPDX-License-Identifier: MIT
#pragma once

#include <QWheelEvent>

namespace kits {

/// One of the toolkit's fields that takes the keyboard focus by Tab or a click, and that the wheel changes only while
/// it has the focus: scrolling past it changes nothing.
template <class Field> class WheelWithFocus : public Field {
public:
    WheelWithFocus() { Field::setFocusPolicy(Qt::StrongFocus); }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (Field::hasFocus())
            Field::wheelEvent(event);
        else
            event->ignore();
    }
};

} // namespace kits
