#include "LedgerUI/testing/LabelAudit.h"

#include <algorithm>
#include <set>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyleOptionFrame>
#include <QTest>
#include <QToolButton>
#include <fmt/format.h>

#include "LedgerUI/Components/Buttons/CardButton.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"

namespace {

std::string nameOf(const QWidget& widget)
{
    return widget.objectName().isEmpty() ? widget.metaObject()->className() : widget.objectName().toStdString();
}

std::string report(const QWidget& widget, const QString& text, QSize needed, QSize has)
{
    return fmt::format("{}: {} (needs {} x {}, has {} x {})", nameOf(widget), text.toStdString(), needed.width(),
                       needed.height(), has.width(), has.height());
}

void auditLabel(const QLabel& label, std::vector<std::string>& cut)
{
    if (label.text().isEmpty() || qobject_cast<const ElidedLabel*>(&label))
        return;
    const auto needed = label.wordWrap() ? QSize{label.minimumSizeHint().width(), label.heightForWidth(label.width())}
                                         : label.sizeHint();
    if (label.width() < needed.width() || label.height() < needed.height())
        cut.push_back(report(label, label.text(), needed, label.size()));
}

void auditButton(const QAbstractButton& button, std::vector<std::string>& cut)
{
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    const bool hidesText = tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull();
    // Cards hold a person's or company's own words and elide them.
    if (button.text().isEmpty() || hidesText || qobject_cast<const CardButton*>(&button))
        return;
    const auto needed = button.sizeHint();
    if (button.width() < needed.width() || button.height() < std::min(needed.height(), button.maximumHeight()))
        cut.push_back(report(button, button.text(), needed, button.size()));
}

/// What a field says while it is empty stands between its margins.
void auditPrompt(const QLineEdit& field, std::vector<std::string>& cut)
{
    constexpr int around = 2; // of the cursor at each end
    const auto prompt = field.placeholderText();
    QStyleOptionFrame option;
    option.initFrom(&field);
    const auto room = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field).width() -
                      field.textMargins().left() - field.textMargins().right();
    const auto needed = field.fontMetrics().horizontalAdvance(prompt) + around;
    if (!prompt.isEmpty() && field.text().isEmpty() && room < needed)
        cut.push_back(report(field, prompt, {needed, field.height()}, {room, field.height()}));
}

/// The visible controls that take the focus by Tab.
QWidgetList tabStops(const QWidget& root)
{
    QWidgetList stops;
    for (auto* widget : root.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == root.window() &&
            (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !widget->focusProxy())
            stops << widget;
    }
    return stops;
}

/// A control's name as readers have it: its own, unless a label beside it names it.
QString spokenName(QAccessibleInterface& control)
{
    for (const auto& [other, relation] : control.relations(QAccessible::Label)) {
        if (other && !other->text(QAccessible::Name).isEmpty())
            return other->text(QAccessible::Name);
    }
    // On Linux a box without a label is spoken as its chosen row alone.
    return control.role() == QAccessible::ComboBox ? QString{} : control.text(QAccessible::Name);
}

void auditHeader(const QHeaderView& header, std::vector<std::string>& cut)
{
    const auto* model = header.model();
    for (int section = 0; model && section < header.count(); ++section) {
        if (header.isSectionHidden(section))
            continue;
        const auto text = model->headerData(section, header.orientation()).toString();
        const int needed = header.sectionSizeHint(section);
        if (header.orientation() == Qt::Horizontal && header.sectionSize(section) < needed)
            cut.push_back(
                report(header, text, {needed, header.height()}, {header.sectionSize(section), header.height()}));
    }
}

/// What stands beyond the edge of a place that does not scroll to the side cannot be seen at all.
void auditWidth(const QScrollArea& area, std::vector<std::string>& cut)
{
    const auto* shown = area.widget();
    const auto room = area.viewport()->size();
    if (shown && area.horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff && shown->width() > room.width())
        cut.push_back(report(area, QStringLiteral("contents"), shown->size(), room));
}

}

std::vector<std::string> auditLabels(QWidget& root)
{
    std::vector<std::string> cut;
    std::size_t seen = 0;
    for (const auto* widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != root.window())
            continue;
        ++seen;
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            auditLabel(*label, cut);
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            auditButton(*button, cut);
        else if (const auto* field = qobject_cast<const QLineEdit*>(widget))
            auditPrompt(*field, cut);
        else if (const auto* header = qobject_cast<const QHeaderView*>(widget))
            auditHeader(*header, cut);
        else if (const auto* area = qobject_cast<const QScrollArea*>(widget))
            auditWidth(*area, cut);
    }
    if (seen == 0)
        cut.emplace_back("nothing is shown");
    return cut;
}

std::vector<std::string> auditControls(QWidget& root)
{
    std::vector<std::string> nameless;
    const auto controls = tabStops(root);
    for (auto* widget : controls) {
        auto* const spoken = QAccessible::queryAccessibleInterface(widget);
        if (widget->objectName().isEmpty() || !spoken || spokenName(*spoken).isEmpty())
            nameless.push_back(nameOf(*widget));
        else if (spoken->role() == QAccessible::NoRole || spoken->role() == QAccessible::Client)
            nameless.push_back(nameOf(*widget) + " has no role");
        const auto* box = qobject_cast<const QComboBox*>(widget);
        if (box && box->view()->accessibleName().isEmpty())
            nameless.push_back("list of " + nameOf(*widget));
    }
    if (controls.empty())
        nameless.emplace_back("nothing can be reached");
    return nameless;
}

std::vector<std::string> auditTabOrder(QWidget& root)
{
    auto* const start = root.window()->focusWidget();
    if (!start)
        return {"nothing has the focus"};
    std::set<const QWidget*> visited;
    auto* at = start;
    do {
        visited.insert(at);
        QTest::keyClick(at, Qt::Key_Tab);
        at = root.window()->focusWidget();
    } while (at && !visited.contains(at));
    std::vector<std::string> missed;
    for (auto* each : tabStops(root)) {
        if (each->isEnabled() && !visited.contains(each))
            missed.push_back(nameOf(*each));
    }
    return missed;
}

std::vector<std::string> auditReturn(QWidget& root)
{
    std::vector<std::string> unsaid;
    if (!qobject_cast<const QDialog*>(&root))
        return unsaid;
    QObject watching;
    for (auto* each : root.findChildren<QPushButton*>()) {
        if (!each->hasFocus() && each->toolTip() != KeyBindings::shown(Command::pressFocused))
            QObject::connect(each, &QPushButton::pressed, &watching,
                             [&unsaid, each] { unsaid.push_back(nameOf(*each)); });
    }
    QTest::keyClick(&root, Qt::Key_Return); // where it comes when the field in focus leaves it
    return unsaid;
}

std::vector<std::string> tabOrder(QWidget& first)
{
    constexpr std::size_t tooMany = 100; // Tab is caught somewhere
    std::vector<std::string> names;
    const auto* window = first.window();
    first.setFocus();
    do {
        names.push_back(nameOf(*window->focusWidget()));
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    } while (window->focusWidget() != &first && names.size() < tooMany);
    return names;
}
