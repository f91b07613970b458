#include "LedgerUI/testing/LabelAudit.h"

#include <algorithm>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <fmt/format.h>

#include "LedgerUI/Components/Buttons/CardButton.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"

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

}

std::vector<std::string> auditLabels(QWidget& root)
{
    std::vector<std::string> cut;
    for (const auto* widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&root))
            continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            auditLabel(*label, cut);
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            auditButton(*button, cut);
        else if (const auto* header = qobject_cast<const QHeaderView*>(widget))
            auditHeader(*header, cut);
    }
    return cut;
}

std::vector<std::string> auditControls(QWidget& root)
{
    std::vector<std::string> nameless;
    for (auto* widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&root) || !(widget->focusPolicy() & Qt::TabFocus))
            continue;
        const auto* spoken = QAccessible::queryAccessibleInterface(widget);
        if (widget->objectName().isEmpty() || !spoken || spoken->text(QAccessible::Name).isEmpty())
            nameless.push_back(nameOf(*widget));
        const auto* box = qobject_cast<const QComboBox*>(widget);
        if (box && box->view()->accessibleName().isEmpty())
            nameless.push_back("list of " + nameOf(*widget));
    }
    return nameless;
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
