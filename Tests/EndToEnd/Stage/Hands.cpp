#include "Tests/EndToEnd/Stage/Hands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QMenu>
#include <QTest>

#include "LedgerUI/Presentation/Text/Words.h"
#include "Tests/EndToEnd/Stage/StoryTeller.h"

namespace {

constexpr int stopsAtMost = 150; // more than any window has

bool hasFocus(const QWidget& control)
{
    const auto* const focus = QApplication::focusWidget();
    return focus && (focus == &control || control.isAncestorOf(focus));
}

/// Of buttons of which one is chosen, Tab stops at that one only; the arrows lead to the others.
QWidget& stopOf(QWidget& control)
{
    auto* const button = qobject_cast<QAbstractButton*>(&control);
    auto* const group = button ? button->group() : nullptr;
    if (group && group->exclusive() && group->checkedButton() && group->checkedButton()->isVisible())
        return *group->checkedButton();
    return control;
}

bool rowSays(const QModelIndex& at, std::string_view text)
{
    const auto wanted = qString(text);
    for (int column = 0; at.isValid() && column < at.model()->columnCount(at.parent()); ++column) {
        if (at.siblingAtColumn(column).data().toString().contains(wanted))
            return true;
    }
    return false;
}

}

/// The control is looked for at each step: a pane may make it anew while somebody is on the way to it.
void Hands::walkTo(std::string_view control) const
{
    const auto wanted = [&]() -> QWidget& { return m_screen.find(control); };
    m_screen.waitUntil(std::string{control} + " can be used", [&] { return wanted().isEnabled(); });
    for (int step = 0; step < stopsAtMost && !hasFocus(stopOf(wanted())) && !hasFocus(wanted()); ++step)
        m_screen.keys("Tab");
    for (int step = 0; step < stopsAtMost && &stopOf(wanted()) != &wanted() && !hasFocus(wanted()); ++step) {
        const auto away = wanted().pos() - stopOf(wanted()).pos();
        m_screen.keys(away.y() != 0 ? (away.y() < 0 ? "Up" : "Down") : (away.x() < 0 ? "Left" : "Right"));
    }
    expect(hasFocus(wanted()), QStringLiteral("Tab leads to %1, not only to %2")
                                   .arg(qString(control), QString::fromStdString(m_screen.focus())));
}

void Hands::press(std::string_view control) const
{
    auto* const check = qobject_cast<QCheckBox*>(&m_screen.find(control));
    if (!usesKeys() && check) { // the middle of a box with a short text is beside it
        QTest::mouseClick(check, Qt::LeftButton, {}, {check->height() / 2, check->height() / 2});
        settle();
        return;
    }
    if (!usesKeys()) {
        m_screen.press(control);
        return;
    }
    walkTo(control);
    const auto* const button = qobject_cast<QAbstractButton*>(&m_screen.find(control));
    if (!button || !button->group() || !button->isChecked()) // the arrows have chosen it already
        m_screen.keys("Space");
}

void Hands::fill(std::string_view field, std::string_view text) const
{
    if (!usesKeys()) {
        m_screen.fill(field, text);
        return;
    }
    walkTo(field);
    m_screen.keys("Ctrl+A Del");
    m_screen.type(text);
}

void Hands::paste(std::string_view field, const std::string& text) const
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    fill(field, "");
    m_screen.keys("Ctrl+V");
}

void Hands::pick(std::string_view box, std::string_view text) const
{
    if (usesKeys())
        walkTo(box);
    m_screen.pick(box, text);
}

void Hands::row(std::string_view view, std::string_view text) const
{
    if (!usesKeys()) {
        m_screen.pressRow(view, text);
        return;
    }
    auto& rows = m_screen.find<QAbstractItemView>(view);
    walkTo(view);
    m_screen.waitUntil(std::string{view} + " has a row with " + std::string{text}, [&] {
        m_screen.keys("Ctrl+Home");
        for (int step = 0; step < rows.model()->rowCount() && !rowSays(rows.currentIndex(), text); ++step)
            m_screen.keys("Down");
        return rowSays(rows.currentIndex(), text);
    });
    if (!rows.selectionModel()->isSelected(rows.currentIndex()))
        m_screen.keys("Down Up"); // the way to the first row alone does not choose it
}

void Hands::choose(std::string_view button, std::string_view action) const
{
    if (!usesKeys()) {
        m_screen.choose(button, action);
        return;
    }
    press(button);
    chooseInMenu(action);
}

void Hands::chooseInMenu(std::string_view action) const
{
    const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
    m_screen.waitUntil("a menu is open", [&] { return menu() != nullptr; });
    const auto wanted = qString(action);
    for (int step = 0; step < stopsAtMost; ++step) {
        m_screen.keys("Down");
        if (const auto* const at = menu()->activeAction(); at && at->objectName() == wanted) {
            m_screen.keys("Return");
            return;
        }
    }
    expect(false, QStringLiteral("the menu offers %1").arg(wanted));
}

void Hands::send(std::string_view button, std::string_view keys) const
{
    if (usesKeys())
        m_screen.keys(keys);
    else
        m_screen.press(button);
}

void Hands::tick(std::string_view table, int row, int column) const
{
    auto& cells = m_screen.find<QAbstractItemView>(table);
    const auto cell = cells.model()->index(row, column);
    if (!usesKeys()) {
        cells.scrollTo(cell);
        QTest::mouseClick(cells.viewport(), Qt::LeftButton, {}, cells.visualRect(cell).center());
        settle();
        return;
    }
    walkTo(table);
    for (int step = 0; step < stopsAtMost && cells.currentIndex().row() != row; ++step)
        m_screen.keys(cells.currentIndex().row() < row ? "Down" : "Up");
    for (int step = 0; step < stopsAtMost && cells.currentIndex().column() != column; ++step)
        m_screen.keys(cells.currentIndex().column() < column ? "Right" : "Left");
    m_screen.keys("Space");
}
