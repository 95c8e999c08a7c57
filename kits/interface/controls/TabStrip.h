// SPDX-License-Identifier: MIT
#pragma once

#include <QTabBar>

class BTab;
class BTabView;
class QStyleOptionTab;
class QStylePainter;

namespace kits {

/// The strip of a tab view: Qt's tab bar, in which each tab paints its own label. It lies along the top of its parent
/// widget. The mouse passes through it to the tab view.
class TabStrip : public QTabBar {
public:
    explicit TabStrip(BTabView* owner);

    /// Makes it lie along the top of this widget, and gives it the widget's focus.
    void PutInto(QWidget* widget);
    /// Takes over labels and selection of the tab view.
    void Update();
    /// Returns the height of a tab in pixels, whether there are tabs or not.
    int Height() const;
    /// For BTab::DrawLabel, while the strip is painted: paints the label of the tab in question.
    void PaintLabel();

protected:
    void paintEvent(QPaintEvent* event) override;
    QSize minimumTabSizeHint(int index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void AddKey(QKeyCombination key, int step);
    void PaintBase(QStylePainter& painter);
    void PaintTab(QStylePainter& painter, int index);

    BTabView* fOwner;
    QStylePainter* fPainter = nullptr;        ///< while a tab is painted
    const QStyleOptionTab* fOption = nullptr; ///< the same
};

} // namespace kits
