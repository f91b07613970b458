#include "LedgerUI/testing/ScreenDriver.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <tuple>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QMenu>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/testing/ReadableText.h"

namespace {

std::string choicesOf(const QComboBox& box)
{
    QStringList texts;
    for (int index = 0; index < box.count(); ++index)
        texts << box.itemText(index);
    return texts.join(QStringLiteral("; ")).toStdString();
}

constexpr int activationMilliseconds = 1000;
constexpr int tabsAtMost = 8;

QString accessibleText(QWidget& widget, QAccessible::Text kind)
{
    auto* const spoken = QAccessible::queryAccessibleInterface(&widget);
    return spoken ? spoken->text(kind) : QString{};
}

/// A modal dialog keeps a person from every window but its own popups.
bool isReachable(const QWidget& window)
{
    const auto* const modal = QApplication::activeModalWidget();
    return !modal || modal == &window || window.windowType() == Qt::Popup;
}

template <class Matches>
QWidget* firstVisible(const Matches& matches)
{
    for (auto* window : visibleWindows() | std::views::reverse) {
        if (!isReachable(*window))
            continue;
        if (matches(*window))
            return window;
        for (auto* widget : window->findChildren<QWidget*>()) {
            if (widget->isVisible() && widget->window() == window && matches(*widget))
                return widget;
        }
    }
    return nullptr;
}

QWidget* findVisible(std::string_view name)
{
    const auto wanted = qString(name);
    if (auto* named = firstVisible([&](const QWidget& each) { return each.objectName() == wanted; }))
        return named;
    return firstVisible([&](QWidget& each) {
        return each.focusPolicy() != Qt::NoFocus && accessibleText(each, QAccessible::Name) == wanted;
    });
}

/// Scrolls to the control as a person would.
void bringIntoView(QWidget& control)
{
    for (auto* above = control.parentWidget(); above; above = above->parentWidget()) {
        if (auto* const scroll = qobject_cast<QScrollArea*>(above))
            scroll->ensureWidgetVisible(&control);
    }
    settle();
}

/// What a click at this place of the control would really hit.
QWidget& hitAt(QWidget& control, QPoint at)
{
    auto* const window = control.window();
    auto* const hit = window->childAt(control.mapTo(window, at));
    return hit ? *hit : *window;
}

bool isHit(QWidget& control)
{
    const auto& hit = hitAt(control, control.rect().center());
    return &hit == &control || control.isAncestorOf(&hit);
}

void click(QWidget& control, QPoint at)
{
    auto& hit = hitAt(control, at);
    QTest::mouseClick(&hit, Qt::LeftButton, {}, hit.mapFrom(control.window(), control.mapTo(control.window(), at)));
}

/// Without a window manager nobody activates the window below when a dialog or a menu closes.
void giveBackTheTurn()
{
    const auto windows = visibleWindows();
    if (!QApplication::activeWindow() && !QApplication::activePopupWidget() && !windows.isEmpty())
        windows.back()->activateWindow();
}

/// Chooses the action in the menu or in one of its submenus; false when neither offers it.
bool chooseIn(QMenu& menu, const QString& wanted)
{
    const auto is = [&](const QAction* each) { return each->objectName() == wanted || each->text() == wanted; };
    for (auto* action : menu.actions()) {
        if (is(action) && action->isEnabled()) {
            QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
            return true;
        }
        auto* const below = action->menu();
        if (below && std::ranges::any_of(below->actions(), is)) {
            menu.setActiveAction(action);
            QTest::keyClick(&menu, Qt::Key_Right);
            return chooseIn(*below, wanted);
        }
    }
    return false;
}

QModelIndex rowSaying(const QAbstractItemModel& model, const QModelIndex& parent, const QString& text)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        for (int column = 0; column < model.columnCount(parent); ++column) {
            const auto cell = model.index(row, column, parent);
            if (cell.data(Qt::DisplayRole).toString().contains(text))
                return cell;
        }
        if (const auto below = rowSaying(model, model.index(row, 0, parent), text); below.isValid())
            return below;
    }
    return {};
}

void pressKey(QWidget& target, const QString& written)
{
    const auto sequence = QKeySequence::fromString(written, QKeySequence::PortableText);
    if (sequence.isEmpty() || sequence[0].key() == Qt::Key_unknown)
        throw ScreenFailure("no such key: " + written.toStdString());
    const auto key = sequence[0];
    const bool isBackwards = key.key() == Qt::Key_Tab && key.keyboardModifiers() == Qt::ShiftModifier;
    QTest::keyClick(&target, isBackwards ? Qt::Key_Backtab : key.key(), key.keyboardModifiers());
}

}

QWidgetList visibleWindows()
{
    constexpr int overEveryDialog = 1000;
    std::multimap<int, QWidget*> byHeight;
    for (auto* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        int height = window->windowType() == Qt::Popup ? overEveryDialog : 0;
        for (const auto* above = window->parentWidget(); above; above = above->parentWidget())
            ++height;
        byHeight.emplace(height, window);
    }
    QWidgetList windows;
    for (const auto& [height, window] : byHeight)
        windows += window;
    return windows;
}

void settle()
{
    constexpr int rounds = 8;
    for (int round = 0; round < rounds; ++round)
        QCoreApplication::processEvents();
}

ScreenDriver::ScreenDriver(std::chrono::milliseconds patience) : m_patience{patience} {}

void ScreenDriver::press(std::string_view name)
{
    auto& control = find(name);
    waitUntil(std::string{name} + " can be pressed", [&] {
        bringIntoView(control);
        return control.isEnabled() && isHit(control);
    });
    giveBackTheTurn();
    click(control, control.rect().center());
    settle();
}

void ScreenDriver::pressRow(std::string_view view, std::string_view text)
{
    auto& rows = find<QAbstractItemView>(view);
    QModelIndex row;
    waitUntil(std::string{view} + " has a row with " + std::string{text}, [&] {
        row = rowSaying(*rows.model(), rows.rootIndex(), qString(text));
        return row.isValid();
    });
    rows.scrollTo(row);
    giveBackTheTurn();
    click(*rows.viewport(), rows.visualRect(row).center());
    settle();
}

void ScreenDriver::choose(std::string_view button, std::string_view action)
{
    // A button may wait for its menu in a loop of its own, so the choice is made from a timer.
    bool isChosen = false;
    QTimer eye;
    QObject::connect(&eye, &QTimer::timeout, &eye, [&] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        eye.stop();
        isChosen = chooseIn(*menu, qString(action));
        while (auto* const left = QApplication::activePopupWidget())
            left->close();
    });
    eye.start(std::chrono::milliseconds{1});
    press(button);
    waitUntil("the menu of " + std::string{button} + " is done",
              [&] { return !eye.isActive() && !QApplication::activePopupWidget(); });
    if (!isChosen)
        fail("the menu of " + std::string{button} + " does not offer " + std::string{action});
    settle();
}

void ScreenDriver::pick(std::string_view box, std::string_view text)
{
    auto& choice = find<QComboBox>(box);
    giveBackTheTurn();
    choice.setFocus();
    const auto wanted = qString(text);
    QTest::keyClick(&choice, Qt::Key_Home);
    while (!choice.currentText().contains(wanted)) {
        const auto before = choice.currentIndex();
        QTest::keyClick(&choice, Qt::Key_Down);
        if (choice.currentIndex() == before)
            fail(std::string{box} + " does not offer " + std::string{text} + ", but " + choicesOf(choice));
    }
    settle();
}

void ScreenDriver::keys(std::string_view sequence)
{
    for (const auto& written : qString(sequence).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        pressKey(keyTarget(), written);
        settle();
    }
}

void ScreenDriver::turnTo(std::string_view contents)
{
    for (int tab = 0; tab < tabsAtMost && !shows(contents); ++tab)
        keys("Ctrl+Tab");
    waitFor(contents);
}

void ScreenDriver::type(std::string_view text)
{
    for (const auto character : qString(text)) {
        auto& target = keyTarget();
        if (character.unicode() < 128) {
            QTest::keyClicks(&target, character);
            continue;
        }
        // What stands on no key comes from an input method.
        QInputMethodEvent composed;
        composed.setCommitString(character);
        QCoreApplication::sendEvent(&target, &composed);
    }
    settle();
}

void ScreenDriver::fill(std::string_view field, std::string_view text)
{
    press(field);
    keys("Ctrl+A Del");
    type(text);
}

bool ScreenDriver::shows(std::string_view name) const
{
    settle();
    return findVisible(name) != nullptr;
}

bool ScreenDriver::offers(std::string_view name) const
{
    settle();
    auto* const control = findVisible(name);
    return control && control->isEnabled() && isHit(*control);
}

std::string ScreenDriver::read(std::string_view name) const
{
    return readableText(find(name)).toStdString();
}

std::string ScreenDriver::spoken(std::string_view name) const
{
    auto& control = find(name);
    auto text = accessibleText(control, QAccessible::Name);
    // A tool tip counts as a description, also where it repeats the name: that is not spoken twice.
    if (const auto more = accessibleText(control, QAccessible::Description); !more.isEmpty() && more != text)
        text += QStringLiteral(": ") + more;
    return text.toStdString();
}

bool ScreenDriver::says(std::string_view text) const
{
    settle();
    const auto wanted = qString(text);
    return std::ranges::any_of(visibleWindows(),
                               [&](const QWidget* each) { return readableText(*each).contains(wanted); });
}

std::string ScreenDriver::readAll() const
{
    settle();
    std::string all;
    for (const auto* window : visibleWindows() | std::views::reverse)
        all += readableText(*window).toStdString() + '\n';
    return all;
}

std::string ScreenDriver::focus() const
{
    settle();
    giveBackTheTurn();
    std::ignore = QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; }, activationMilliseconds);
    const auto* const focus = QApplication::focusWidget();
    if (!focus || !focus->isVisible() || focus->visibleRegion().isEmpty())
        return "nothing";
    return (focus->objectName().isEmpty() ? QString::fromLatin1(focus->metaObject()->className()) : focus->objectName())
        .toStdString();
}

void ScreenDriver::waitUntil(std::string_view what, const std::function<bool()>& holds) const
{
    settle();
    if (!QTest::qWaitFor(holds, static_cast<int>(m_patience.count())))
        fail("waited in vain: " + std::string{what} + "; there was:\n" + readAll());
}

void ScreenDriver::waitFor(std::string_view name) const
{
    std::ignore = await(name);
}

void ScreenDriver::waitForText(std::string_view text) const
{
    waitUntil('"' + std::string{text} + "\" can be read", [&] { return says(text); });
}

void ScreenDriver::waitUntilGone(std::string_view name) const
{
    waitUntil(std::string{name} + " is gone", [&] { return findVisible(name) == nullptr; });
}

void ScreenDriver::waitForFocus(std::string_view name) const
{
    auto& control = find(name);
    waitUntil(std::string{name} + " has the focus", [&] {
        giveBackTheTurn();
        const auto* const focus = QApplication::focusWidget();
        return focus && (focus == &control || control.isAncestorOf(focus));
    });
}

QWidget* ScreenDriver::await(std::string_view name) const
{
    QWidget* found = nullptr;
    waitUntil(std::string{name} + " is there", [&] {
        found = findVisible(name);
        return found != nullptr;
    });
    return found;
}

QWidget& ScreenDriver::keyTarget() const
{
    QWidget* target = nullptr;
    waitUntil("something has the focus", [&] {
        giveBackTheTurn();
        target = QApplication::activePopupWidget() ? QApplication::activePopupWidget() : QApplication::focusWidget();
        return target != nullptr;
    });
    return *target;
}

void ScreenDriver::fail(const std::string& what)
{
    throw ScreenFailure(what);
}
