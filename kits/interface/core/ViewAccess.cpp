// SPDX-License-Identifier: MIT
#include "kits/interface/core/ViewAccess.h"

#include "kits/interface/AccessiblePart.h"
#include "kits/interface/View.h"
#include "kits/interface/core/ViewImpl.h"
#include "kits/interface/core/ViewPane.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <vector>

namespace kits {

namespace {

constexpr double kWhole = 100;

class ViewAccess;

/// One part of a view. The view's interface owns it.
class PartAccess : public QAccessibleInterface, public QAccessibleValueInterface {
public:
    PartAccess(ViewAccess* owner, int index)
        : fOwner(owner)
        , fIndex(index)
    {
    }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ProgressBar; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    }

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override { return kWhole; }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return 0.0; }

private:
    AccessiblePart Part() const;

    ViewAccess* fOwner;
    int fIndex;
};

class ViewAccess : public QAccessibleWidget {
public:
    explicit ViewAccess(ViewPane* pane)
        : QAccessibleWidget(pane)
        , fPane(pane)
    {
    }
    ~ViewAccess() override
    {
        for (const QAccessible::Id id : fParts)
            QAccessible::deleteAccessibleInterface(id);
    }

    /// Returns null if the view is gone.
    const BView* View() const { return isValid() && fPane->Impl() != nullptr ? fPane->Impl()->fView : nullptr; }
    std::vector<AccessiblePart> Parts() const
    {
        const BView* view = View();
        return view != nullptr ? view->AccessibleParts() : std::vector<AccessiblePart>();
    }

    QString text(QAccessible::Text kind) const override
    {
        // Screen readers say the description after the name; few ask a picture for its value.
        if (kind == QAccessible::Value || kind == QAccessible::Description) {
            const BView* view = View();
            return view != nullptr ? QString::fromStdString(view->AccessibleValue()) : QString();
        }
        return QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        // The focus goes to the widget inside.
        if (isValid() && fPane->focusProxy() != nullptr)
            state.focusable = false;
        return state;
    }

    QAccessible::Role role() const override { return Parts().empty() ? QAccessibleWidget::role() : QAccessible::Chart; }

    // Widgets first, then the parts.

    int childCount() const override { return QAccessibleWidget::childCount() + static_cast<int>(Parts().size()); }

    QAccessibleInterface* child(int index) const override
    {
        const int widgets = QAccessibleWidget::childCount();
        if (index < widgets)
            return QAccessibleWidget::child(index);
        const int part = index - widgets;
        return part < static_cast<int>(Parts().size()) ? PartAt(part) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        for (int i = 0; i < fParts.size(); i++)
            if (QAccessible::accessibleInterface(fParts[i]) == child)
                return QAccessibleWidget::childCount() + i;
        return QAccessibleWidget::indexOfChild(child);
    }

private:
    QAccessibleInterface* PartAt(int index) const
    {
        while (fParts.size() <= index)
            fParts.append(QAccessible::registerAccessibleInterface(
                new PartAccess(const_cast<ViewAccess*>(this), static_cast<int>(fParts.size()))));
        return QAccessible::accessibleInterface(fParts[index]);
    }

    ViewPane* fPane;
    mutable QList<QAccessible::Id> fParts;
};

AccessiblePart PartAccess::Part() const
{
    const std::vector<AccessiblePart> parts = fOwner->Parts();
    const auto index = static_cast<std::size_t>(fIndex);
    return index < parts.size() ? parts[index] : AccessiblePart();
}

bool PartAccess::isValid() const
{
    return fIndex < static_cast<int>(fOwner->Parts().size());
}

QAccessibleInterface* PartAccess::parent() const
{
    return fOwner;
}

QString PartAccess::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return QString::fromStdString(Part().name);
    case QAccessible::Value:
    case QAccessible::Description:
        return QString::fromStdString(Part().value);
    default:
        return {};
    }
}

QRect PartAccess::rect() const
{
    return fOwner->rect();
}

QAccessible::State PartAccess::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    state.invisible = fOwner->state().invisible;
    return state;
}

QVariant PartAccess::currentValue() const
{
    return Part().share * kWhole;
}

QAccessibleInterface* MakeAccess(const QString&, QObject* object)
{
    auto* pane = dynamic_cast<ViewPane*>(object);
    return pane != nullptr && pane->Impl() != nullptr ? new ViewAccess(pane) : nullptr;
}

} // namespace

void EnableViewAccess()
{
    QAccessible::installFactory(MakeAccess);
}

} // namespace kits

std::string BView::AccessibleValue() const
{
    std::string value;
    for (const AccessiblePart& part : AccessibleParts())
        value += (value.empty() ? "" : ", ") + part.name + " " + part.value;
    return value;
}

std::vector<AccessiblePart> BView::AccessibleParts() const
{
    return {};
}
