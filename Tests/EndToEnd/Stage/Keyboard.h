#pragma once

#include <string>

#include <QAbstractItemView>

#include "LedgerUI/testing/ScreenDriver.h"
#include "Tests/EndToEnd/Stage/Desk.h"
#include "Tests/EndToEnd/Stage/StoryTeller.h"

/// What a person does without a mouse.
struct Keyboard {
    ScreenDriver& screen;

    void press(const char* button) const
    {
        screen.waitUntil(std::string{button} + " can be pressed", [&] { return screen.offers(button); });
        screen.find(button).setFocus();
        screen.keys("Space");
    }
    void write(const char* field, const char* text) const
    {
        screen.find(field).setFocus();
        screen.keys("Ctrl+A");
        screen.type(text);
    }
    void open(const char* button) const
    {
        press(button);
        screen.waitForFocus("recordForm");
    }
    /// Sends the form and waits until it has closed.
    void confirm() const
    {
        screen.keys("Ctrl+Return");
        screen.waitUntilGone("recordForm");
    }
    /// From the first row of a list down to the one that says `text`.
    void choose(const char* list, const char* text) const
    {
        auto& rows = screen.find<QAbstractItemView>(list);
        rows.setFocus();
        screen.keys("Ctrl+Home");
        const auto says = [&] {
            const auto at = rows.currentIndex();
            for (int column = 0; at.isValid() && column < rows.model()->columnCount(); ++column) {
                if (at.siblingAtColumn(column).data().toString().contains(QString::fromUtf8(text)))
                    return true;
            }
            return false;
        };
        for (int row = 0; row < rows.model()->rowCount() && !says(); ++row)
            screen.keys("Down");
        expect(says(), QStringLiteral("a row says %1").arg(QString::fromUtf8(text)));
    }
    void turnTo(const char* contents) const { screen.turnTo(contents); }
};
