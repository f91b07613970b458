#include "LedgerUI/testing/ReadableText.h"

#include <algorithm>
#include <optional>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace {

QString cellText(const QModelIndex& index)
{
    const auto shown = index.data(Qt::DisplayRole).toString();
    return shown.isEmpty() ? index.data(Qt::AccessibleTextRole).toString() : shown;
}

void appendRows(const QAbstractItemModel& model, const QModelIndex& parent, QStringList& lines)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(parent); ++column)
            cells << cellText(model.index(row, column, parent));
        cells.removeAll(QString{});
        lines << cells.join(QStringLiteral(" | "));
        appendRows(model, model.index(row, 0, parent), lines);
    }
}

QString rowsOf(const QAbstractItemView& view)
{
    QStringList lines;
    if (view.model())
        appendRows(*view.model(), {}, lines);
    return lines.join(QLatin1Char('\n'));
}

QString actionsOf(const QMenu& menu)
{
    QStringList lines;
    for (const auto* action : menu.actions()) {
        if (action->isVisible() && !action->isSeparator())
            lines << action->text();
    }
    return lines.join(QLatin1Char('\n'));
}

/// The text of a control that has one of its own; nothing for one that only holds others.
std::optional<QString> ownText(const QWidget& control)
{
    if (const auto* label = qobject_cast<const QLabel*>(&control))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return button->text();
    if (const auto* field = qobject_cast<const QLineEdit*>(&control))
        return field->displayText();
    if (const auto* box = qobject_cast<const QComboBox*>(&control))
        return box->currentText();
    if (const auto* text = qobject_cast<const QTextEdit*>(&control))
        return text->toPlainText();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&control))
        return text->toPlainText();
    if (const auto* menu = qobject_cast<const QMenu*>(&control))
        return actionsOf(*menu);
    if (qobject_cast<const QHeaderView*>(&control))
        return QString{};
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&control))
        return rowsOf(*view);
    return std::nullopt;
}

/// The visible children as they are read: from the top, and in one line from the left.
QWidgetList inReadingOrder(const QWidget& parent)
{
    QWidgetList children;
    for (auto* child : parent.findChildren<QWidget*>(QString{}, Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && !child->isWindow())
            children << child;
    }
    std::ranges::sort(children, {}, [](const QWidget* each) { return std::pair{each->y(), each->x()}; });
    return children;
}

}

QString readableText(const QWidget& control)
{
    if (const auto own = ownText(control))
        return *own;
    QStringList lines;
    for (const auto* child : inReadingOrder(control))
        lines << readableText(*child);
    lines.removeAll(QString{});
    return lines.join(QLatin1Char('\n'));
}
