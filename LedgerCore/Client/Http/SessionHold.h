#pragma once

#include <string>

/// The mark of a window on the session that it uses. Windows of one person on one computer take up the same session
/// from the keychain, and by this mark the one that leaves it knows whether others go on with it. The mark goes with
/// the program, however that ends; where none can be made, the session counts as this window's alone.
class SessionHold {
public:
    SessionHold(const std::string& address, const std::string& token);
    ~SessionHold();
    SessionHold(const SessionHold&) = delete;
    SessionHold& operator=(const SessionHold&) = delete;

    /// Whether another window uses the same session.
    [[nodiscard]] bool isShared() const;

private:
    std::string m_file;
    int m_descriptor = -1;
};
