#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "LedgerCore/Client/Session/SessionCredentialStore.h"

class MainWindow;

/// The whole client put together: what the store reaches outside, the store, the pages and the window.
class TallyfoldApp {
public:
    /// What differs between the program and those that drive its window.
    struct Setup {
        std::optional<std::string> language; // used instead of the kept one, and not kept
        std::unique_ptr<SessionCredentialStore> credentials;
        std::optional<std::string> service = {}; // the address to begin with, instead of the one that was built in
    };

    explicit TallyfoldApp(Setup setup);
    ~TallyfoldApp();

    /// Opens the window.
    void start();
    /// Does what is left to do once the window is closed, and says `left`: after a few seconds in any case.
    void leave(std::function<void()> left);
    [[nodiscard]] MainWindow& window();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
