#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "LedgerUI/testing/ScreenDriver.h"

class QAbstractItemView;

/// How somebody works a window: with a mouse and typing into what was clicked, or with keys alone, who then walks by
/// Tab to whatever they press, as far as Tab leads.
enum class Hand { mouse, keys };

/// A person at the windows of the program who has learned one way of working them.
class Hands {
public:
    Hands(ScreenDriver& screen, Hand hand) : m_screen{screen}, m_hand{hand} {}

    void press(std::string_view control) const;
    /// Replaces what stands in the field.
    void fill(std::string_view field, std::string_view text) const;
    /// Pastes over what stands in the field.
    void paste(std::string_view field, const std::string& text) const;
    /// Chooses the row of a combo box in which `text` can be read.
    void pick(std::string_view box, std::string_view text) const;
    /// Chooses the row of a list in which `text` can be read.
    void row(std::string_view view, std::string_view text) const;
    /// Chooses an action of the menu that a button opens.
    void choose(std::string_view button, std::string_view action) const;
    /// Chooses by keys an action of the menu that is open.
    void chooseInMenu(std::string_view action) const;
    /// Sends the form: by its button, or by the keys for it.
    void send(std::string_view button, std::string_view keys = "Ctrl+Return") const;
    /// Toggles a cell of a table of ticks.
    void tick(std::string_view table, int row, int column) const;
    [[nodiscard]] bool usesKeys() const { return m_hand == Hand::keys; }

private:
    void walkTo(std::string_view control) const;

    ScreenDriver& m_screen;
    Hand m_hand;
};
