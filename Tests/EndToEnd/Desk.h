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
    /// `service` is the address that the program begins with.
    Desk(std::string service, const ScreenDriver& screen);
    ~Desk();

    /// Starts the program and waits for its window.
    void open();
    /// Closes the window as a person does, and ends the program.
    void close();
    [[nodiscard]] MainWindow& window();

private:
    std::string m_service;
    const ScreenDriver& m_screen;
    SessionMemory m_keychain;
    std::unique_ptr<TallyfoldApp> m_program;
};

/// Opens the menu of the companies and waits until it lists them.
void openCompanies(ScreenDriver& screen);

/// The person turns to the program from another one.
void comeBack();
