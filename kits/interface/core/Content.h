// SPDX-License-Identifier: MIT
#pragma once

#include "kits/support/Color.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

class BView;

namespace kits {

/// The toolkit's widget of a control, and the context of all signals from it to the control: once this is destroyed, no
/// slot of the control is called any more, and the widget is destroyed too.
///
/// Made on the main thread when the widget is first needed: for a size, or when the control is attached. Destroyed on
/// any thread, with the interface lock held.
class Content : public QObject {
public:
    Content() = default;
    ~Content() override;

    /// Takes ownership of the widget.
    void SetWidget(QWidget* widget) { fWidget = widget; }
    template <class Widget = QWidget> Widget* As() const { return static_cast<Widget*>(fWidget.data()); }

private:
    QPointer<QWidget> fWidget;
};

/// Deletes a widget, now or, on another thread than the main one, in a coming turn of the main thread. Null is ignored.
void DeleteOnMain(QWidget* widget);

/// Makes text and lines on `background` readable: uses the theme's palette if it is as light or dark as that colour,
/// otherwise one made from the colour.
void FitPalette(QWidget* widget, rgb_color background);
/// Returns the colour behind what `view` draws: its view colour, or what shows through it from its parents; opaque.
rgb_color ColorBehind(const BView* view);
/// Gives a view that was just attached the view colour of its parent, or the theme's if the parent has none.
void TakeParentColor(BView* view);

/// Returns the size that a widget asks for, as right minus left and bottom minus top; either may be null.
void GetSizeHint(QWidget* widget, float* width, float* height);

/// Returns a label as text in which Qt does not look for underlined letters.
QString ToLabel(const char* text);
QString ToText(const char* text);

} // namespace kits
