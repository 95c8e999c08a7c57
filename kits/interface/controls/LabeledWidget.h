// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

class QLabel;

namespace kits {

/// A text with a field to its right that fills the rest: the basis of text controls and menu fields. The field is
/// centred vertically, has the focus, and is named by the text. A text that lacks room is set in narrower letters, and
/// shortened if these do not fit either.
class LabeledWidget : public QWidget {
public:
    /// @param field  owned from here
    explicit LabeledWidget(QWidget* field);

    QWidget* Field() const { return fField; }
    void SetLabel(const QString& label);
    /// @param divider  where the field begins, in pixels; below 0 it begins where the label ends
    void SetDivider(float divider);
    /// Returns where the field begins now.
    int Divider() const;
    /// The divider below which the label is shortened.
    int NarrowestLabelWidth() const;

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int LabelWidth() const;
    void LayOut();

    QWidget* fField;
    QLabel* fText;
    QString fLabel;
    float fDivider = -1;
};

} // namespace kits
