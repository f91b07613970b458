#include "LedgerUI/Components/Buttons/ComboBoxLists.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QStyledItemDelegate>

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

void nameComboBox(QComboBox& box, const QString& name)
{
    box.setAccessibleName(name);
    box.view()->setAccessibleName(name);
    if (box.lineEdit())
        box.lineEdit()->setAccessibleName(name);
    if (auto* list = suggestions(box))
        list->setAccessibleName(name);
}
