#include "Tests/EndToEnd/StoryTeller.h"

#include <algorithm>
#include <cstdio>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QWidget>

#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int patienceMilliseconds = 30'000;
constexpr int settleMilliseconds = 200; // for the pictures only: texts behind a short delay have come by then

void say(const QString& line)
{
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

bool isReachable(const QWidget* widget)
{
    return widget->isVisible() &&
           (!QApplication::activeModalWidget() || QApplication::activeModalWidget()->isAncestorOf(widget) ||
            QApplication::activeModalWidget() == widget || widget->window()->windowType() == Qt::Popup);
}

QWidget* findVisible(const QString& name)
{
    for (auto* widget : QApplication::allWidgets()) {
        if (widget->objectName() == name && isReachable(widget))
            return widget;
    }
    return nullptr;
}

/// Chooses the action of this name in the menu or in one of its submenus; false when neither offers it.
bool chooseIn(QMenu& menu, const QString& name)
{
    for (auto* action : menu.actions()) {
        if (action->objectName() == name) {
            QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
            return true;
        }
        if (auto* const below = action->menu(); below && below->findChild<QAction*>(name)) {
            menu.setActiveAction(action);
            QTest::keyClick(&menu, Qt::Key_Right);
            return chooseIn(*below, name);
        }
    }
    return false;
}

QString textOf(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    if (const auto* field = qobject_cast<const QLineEdit*>(widget))
        return field->text();
    if (const auto* text = qobject_cast<const QTextEdit*>(widget))
        return text->toPlainText();
    return {};
}

/// The main window first, then dialogs and popups in the order in which they stand above it.
QWidgetList visibleWindows()
{
    QWidgetList windows;
    for (auto* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            windows += window;
    }
    std::ranges::sort(windows, {}, [](const QWidget* window) {
        int depth = 0;
        for (const auto* above = window->parentWidget(); above; above = above->parentWidget())
            ++depth;
        return window->windowType() == Qt::Popup ? depth + 1000 : depth;
    });
    return windows;
}

/// Without a window manager nobody activates the window below when a dialog or a menu closes.
void giveBackTheTurn()
{
    const auto windows = visibleWindows();
    if (!QApplication::activeWindow() && !QApplication::activePopupWidget() && !windows.isEmpty())
        windows.back()->activateWindow();
}

}

StoryTeller::StoryTeller(QDir screens) : m_screens(std::move(screens))
{
    m_screens.mkpath(QStringLiteral("."));
    for (const auto& old : m_screens.entryList({QStringLiteral("*.png")}))
        m_screens.remove(old);
}

void StoryTeller::step(const QString& title, const std::function<void()>& act)
{
    say(QStringLiteral("%1. %2").arg(m_steps + 1, 2).arg(title));
    act();
    picture(title);
}

void StoryTeller::picture(const QString& title)
{
    ++m_steps;
    QTest::qWait(settleMilliseconds);
    const auto windows = visibleWindows();
    expect(!windows.isEmpty(), QStringLiteral("a window is open"));
    auto picture = windows.front()->grab();
    QPainter painter{&picture};
    for (auto* above : windows.mid(1)) {
        const auto place = above->geometry().translated(-windows.front()->geometry().topLeft());
        painter.drawPixmap(place.topLeft(), above->grab());
        painter.setPen(Theme::current().color(Token::control)); // where the window system draws its frame
        painter.drawRect(place);
    }
    painter.end();
    static const QRegularExpression notForNames{QStringLiteral("[^a-z0-9]+")};
    const auto name = QStringLiteral("%1-%2.png")
                          .arg(m_steps, 2, 10, QLatin1Char('0'))
                          .arg(title.toLower().replace(notForNames, QStringLiteral("-")));
    expect(picture.save(m_screens.filePath(name)), QStringLiteral("the picture %1 can be written").arg(name));
}

void StoryTeller::click(const QString& name)
{
    auto* control = find(name);
    waitUntil(QStringLiteral("%1 can be clicked").arg(name), [&] { return control->isEnabled(); });
    giveBackTheTurn();
    QTest::mouseClick(control, Qt::LeftButton);
}

void StoryTeller::chooseFrom(const QString& button, const QString& action)
{
    // A button may wait for its menu in a loop of its own, so the choice is made from a timer.
    bool isChosen = false;
    QTimer eye;
    QObject::connect(&eye, &QTimer::timeout, &eye, [&] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        eye.stop();
        isChosen = chooseIn(*menu, action);
        while (auto* const left = QApplication::activePopupWidget())
            left->close();
    });
    eye.start(std::chrono::milliseconds{10});
    click(button);
    waitUntil(QStringLiteral("the menu of %1 is done").arg(button),
              [&] { return !eye.isActive() && !QApplication::activePopupWidget(); });
    expect(isChosen, QStringLiteral("the menu of %1 offers %2").arg(button, action));
}

QWidget* StoryTeller::keyTarget()
{
    QWidget* target = nullptr;
    waitUntil(QStringLiteral("something has the focus"), [&] {
        giveBackTheTurn();
        target = QApplication::activePopupWidget() ? QApplication::activePopupWidget() : QApplication::focusWidget();
        return target != nullptr;
    });
    return target;
}

void StoryTeller::type(const QString& text)
{
    QTest::keyClicks(keyTarget(), text);
}

void StoryTeller::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(keyTarget(), key, modifiers);
}

void StoryTeller::fill(const QString& name, const QString& text)
{
    click(name);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    type(text);
}

void StoryTeller::waitUntil(const QString& what, const std::function<bool()>& holds)
{
    if (!QTest::qWaitFor(holds, patienceMilliseconds))
        throw StoryFailure("waited in vain: " + what.toStdString());
}

void StoryTeller::waitForFocusIn(const QString& name)
{
    auto* const control = find(name);
    waitUntil(QStringLiteral("%1 has the focus").arg(name), [&] {
        giveBackTheTurn();
        auto* const focused = QApplication::focusWidget();
        return focused && (focused == control || control->isAncestorOf(focused));
    });
}

void StoryTeller::waitUntilGone(const QString& name)
{
    waitUntil(QStringLiteral("%1 is gone").arg(name), [&] { return findVisible(name) == nullptr; });
}

void StoryTeller::waitForText(const QString& text)
{
    waitUntil(QStringLiteral("“%1” can be read").arg(text), [&] {
        for (const auto* widget : QApplication::allWidgets()) {
            if (widget->isVisible() && textOf(widget).contains(text))
                return true;
        }
        return false;
    });
}

QWidget* StoryTeller::find(const QString& name)
{
    QWidget* found = nullptr;
    waitUntil(QStringLiteral("%1 is there").arg(name), [&] {
        found = findVisible(name);
        return found != nullptr;
    });
    return found;
}

void expect(bool holds, const QString& promise)
{
    if (!holds)
        throw StoryFailure("broken promise: " + promise.toStdString());
}
