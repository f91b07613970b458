#include "LedgerUI/Components/Buttons/ComboBoxLists.h"

#include <chrono>

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QTimer>

#include "LedgerUI/Theme/StyleProperty.h"

namespace {

/// The list of what fits the text typed so far, or null.
QAbstractItemView* suggestions(const QComboBox& box)
{
    return box.lineEdit() && box.lineEdit()->completer() ? box.lineEdit()->completer()->popup() : nullptr;
}

}

void dressComboBox(QComboBox& box)
{
    // The delegates that lists come with paint past the style sheet.
    box.setItemDelegate(new QStyledItemDelegate(&box));
    if (auto* list = suggestions(box)) {
        list->setItemDelegate(new QStyledItemDelegate(list));
        setStyleProperty(list, "dropDown", QStringLiteral("true"));
    }
}

namespace {

/// The label that readers take the box's name from: on Linux they hear the chosen row in place of a name of its own.
/// Where no label stands beside the box, a hidden one does.
QLabel* labelOf(QComboBox& box)
{
    auto* const place = box.parentWidget();
    if (!place)
        return nullptr;
    for (auto* label : place->findChildren<QLabel*>(QString{}, Qt::FindDirectChildrenOnly)) {
        if (label->buddy() == &box)
            return label;
    }
    auto* const label = new QLabel(place);
    label->setBuddy(&box);
    label->hide();
    return label;
}

/// A box makes its list, a window of its own, when it is first asked for: that waits for another turn than the one in
/// which the box is made.
void nameListOf(QComboBox& box)
{
    const auto name = [&box] { box.view()->setAccessibleName(box.accessibleName()); };
    if (box.findChild<QAbstractItemView*>())
        name();
    else
        QTimer::singleShot(std::chrono::milliseconds{1}, &box, name);
}

}

void nameComboBox(QComboBox& box, const QString& name)
{
    box.setAccessibleName(name);
    if (auto* const label = labelOf(box); label && label->isHidden())
        label->setText(name);
    nameListOf(box);
    if (box.lineEdit())
        box.lineEdit()->setAccessibleName(name);
    if (auto* list = suggestions(box))
        list->setAccessibleName(name);
}
