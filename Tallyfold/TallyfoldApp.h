#pragma once

#include <memory>
#include <optional>
#include <string>

class LedgerStore;
class MainWindow;

/// The whole client put together: what the store reaches outside, the store, the pages and the window.
class TallyfoldApp {
public:
    /// `language` is used instead of the kept one and is not kept.
    explicit TallyfoldApp(std::optional<std::string> language);
    ~TallyfoldApp();

    /// Opens the window.
    void start();
    [[nodiscard]] MainWindow& window();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
