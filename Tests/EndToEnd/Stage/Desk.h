#pragma once

#include <memory>
#include <string>

#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerUI/testing/ScreenDriver.h"

class MainWindow;
class TallyfoldApp;

/// The program on the computer of one person, built for an address of the service. Its keychain stays when the window
/// is closed.
class Desk {
public:
    /// What a computer has: the language of its desktop, and whether sessions go into the story's keyring, which
    /// tells computers apart by the address of the service only.
    struct Equipment {
        std::string language = "en-US";
        bool hasKeyring = false;
    };

    /// `service` is the address that the program begins with.
    Desk(std::string service, const ScreenDriver& screen);
    Desk(std::string service, const ScreenDriver& screen, Equipment equipment);
    ~Desk();

    /// Starts the program and waits for its window.
    void open();
    /// Closes the window as a person does, and ends the program.
    void close();
    [[nodiscard]] MainWindow& window();
    /// The person at this computer looks up and another one goes on; what is open stays open.
    void rest();
    /// The person turns to the program again.
    void goOn();

private:
    std::string m_service;
    Equipment m_equipment;
    const ScreenDriver& m_screen;
    SessionMemory m_keychain;
    std::unique_ptr<TallyfoldApp> m_program;
};

/// Opens the menu of the companies and waits until it lists them.
void openCompanies(ScreenDriver& screen);

/// Pastes the photo of a receipt on paper of this colour.
void pastePhoto(ScreenDriver& screen, Qt::GlobalColor paper = Qt::lightGray);

/// The person turns to the program from another one.
void comeBack();
