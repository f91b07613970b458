#pragma once

#include <string>

#include <QString>

/// The letters of the service, as it puts them into a folder where it has no mail server.
class Mailbox {
public:
    explicit Mailbox(QString folder) : m_folder(std::move(folder)) {}

    /// How many letters went to the address.
    [[nodiscard]] int lettersTo(const std::string& address) const;
    /// The one-time code in the latest letter to the address; empty without one.
    [[nodiscard]] std::string latestCode(const std::string& address) const;

private:
    [[nodiscard]] QStringList letters(const std::string& address) const;

    QString m_folder;
};
