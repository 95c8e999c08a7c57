// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

class BView;

namespace kits {

/// The toolkit's widget that stands for a control in its view, and the context of all signals that lead from it to the
/// control: when this is destroyed no slot of the control is called any more, and the widget goes too.
///
/// Made on the main thread, by the first thing that needs the widget: being asked for a size, or being attached.
/// Destroyed on any thread, with the interface lock held.
class Content : public QObject {
public:
    Content() = default;
    ~Content() override;

    /// Takes the widget over.
    void SetWidget(QWidget* widget) { fWidget = widget; }
    template <class Widget = QWidget> Widget* As() const { return static_cast<Widget*>(fWidget.data()); }

private:
    QPointer<QWidget> fWidget;
};

/// Lets text and lines that are drawn on `background` be read: the theme's palette where it is as light or dark as that
/// colour, else one made from the colour.
void FitPalette(QWidget* widget, rgb_color background);
/// The colour that shows behind what `view` draws: its view colour, or what shows through it from above; opaque.
rgb_color ColorBehind(const BView* view);
/// Gives a view that was just attached the view colour of its parent, or the theme's where it has none.
void TakeParentColor(BView* view);

/// The size that a widget asks for, as right minus left and bottom minus top; either may be null.
void GetSizeHint(QWidget* widget, float* width, float* height);

/// A label as text that Qt must not search for underlined letters.
QString ToLabel(const char* text);
QString ToText(const char* text);

} // namespace kits
