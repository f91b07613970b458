#pragma once

#include <functional>
#include <stdexcept>

#include <QDir>
#include <QString>
#include <Qt>

class QWidget;

/// What a person would have seen and did not.
class StoryFailure : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Drives the program's real windows by mouse and keys, says each step on the terminal and keeps a picture of it.
/// Controls are found by object name among what is visible; each wait ends with what was waited for or in a
/// `StoryFailure`.
class StoryTeller {
public:
    /// `screens` receives the pictures, numbered in the order of the story.
    explicit StoryTeller(QDir screens);

    /// One step: said, done, and pictured.
    void step(const QString& title, const std::function<void()>& act);
    /// A picture between steps.
    void picture(const QString& title);

    void click(const QString& name);
    /// Clicks the button and chooses the action of this name in its menu or in a submenu.
    void chooseFrom(const QString& button, const QString& action);
    /// Types into the control that has the focus.
    void type(const QString& text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Gives the focus to the control by a click and replaces its text.
    void fill(const QString& name, const QString& text);

    /// The visible control of this name, waited for.
    template <class Widget = QWidget>
    Widget& visible(const QString& name)
    {
        auto* found = dynamic_cast<Widget*>(find(name));
        if (!found)
            throw StoryFailure("no such control: " + name.toStdString());
        return *found;
    }
    void waitUntil(const QString& what, const std::function<bool()>& holds);
    /// Waits until keys go to this control or to one inside it.
    void waitForFocusIn(const QString& name);
    void waitUntilGone(const QString& name);
    /// Waits for a visible label, button or field that contains `text`.
    void waitForText(const QString& text);

    [[nodiscard]] int steps() const { return m_steps; }

private:
    QWidget* find(const QString& name);
    /// Where keys go: the open popup, else what has the focus.
    QWidget* keyTarget();

    QDir m_screens;
    int m_steps = 0;
};

/// Stops the story when a promise of the program does not hold.
void expect(bool holds, const QString& promise);
