#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <QString>
#include <QWidget>

/// What a person would have seen or done and could not.
class ScreenFailure : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A person at the program's windows: looks at what is visible, presses, types and reads it, and waits for it as long
/// as their patience lasts; what does not come by then is a `ScreenFailure`. A control is named by its object name, or
/// else by what a reader calls it. Where several windows are open, the one on top is searched first.
class ScreenDriver {
public:
    explicit ScreenDriver(std::chrono::milliseconds patience = std::chrono::seconds{10});

    /// A click in the middle of a control that is there, enabled and covered by nothing.
    void press(std::string_view name);
    /// A click on the first row of a list or table in which `text` can be read.
    void pressRow(std::string_view view, std::string_view text);
    /// Opens the menu of a button and chooses the action of this object name or text, also from a menu inside it.
    void choose(std::string_view button, std::string_view action);
    /// Chooses by keyboard the row of a combo box in which `text` can be read.
    void pick(std::string_view box, std::string_view text);
    /// Keys as they are written, one after the other: "Ctrl+F", "Down Down Return", "Shift+Tab".
    void keys(std::string_view sequence);
    /// From one tab of the page to the next by keys, until the control of this name is there.
    void turnTo(std::string_view contents);
    /// Types into what has the focus.
    void type(std::string_view text);
    /// Presses the field and replaces its text by typing.
    void fill(std::string_view field, std::string_view text);

    /// The control of this name and kind, waited for.
    template <class Widget = QWidget>
    [[nodiscard]] Widget& find(std::string_view name) const
    {
        auto* found = dynamic_cast<Widget*>(await(name));
        if (!found)
            fail(std::string{name} + " is another kind of control");
        return *found;
    }
    /// Whether a control of this name can be seen now.
    [[nodiscard]] bool shows(std::string_view name) const;
    /// Whether it can be seen and would react to a click now.
    [[nodiscard]] bool offers(std::string_view name) const;
    /// What can be read in the control; see readableText().
    [[nodiscard]] std::string read(std::string_view name) const;
    /// What readers speak for the control: its name, and behind ": " what they add to it.
    [[nodiscard]] std::string spoken(std::string_view name) const;
    /// Whether `text` stands anywhere in a visible control.
    [[nodiscard]] bool says(std::string_view text) const;
    /// Everything that can be read in all windows, from the one on top down.
    [[nodiscard]] std::string readAll() const;
    /// The object name (or class) of what has the keyboard; "nothing" when that cannot be seen.
    [[nodiscard]] std::string focus() const;

    void waitUntil(std::string_view what, const std::function<bool()>& holds) const;
    void waitFor(std::string_view name) const;
    void waitForText(std::string_view text) const;
    void waitUntilGone(std::string_view name) const;
    /// Waits until keys go to the control of this name or to one inside it.
    void waitForFocus(std::string_view name) const;

private:
    [[nodiscard]] QWidget* await(std::string_view name) const;
    [[nodiscard]] QWidget& keyTarget() const;
    [[noreturn]] static void fail(const std::string& what);

    std::chrono::milliseconds m_patience;
};

/// The program's visible windows, from the bottom up: first the main window, then dialogs and popups over it.
QWidgetList visibleWindows();

/// Lets posted events have their effect: texts, then layouts, then the layouts that these ask for.
void settle();
