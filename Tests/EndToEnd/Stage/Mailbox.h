#pragma once

#include <string>

#include <QString>

/// The letters of the service, as it puts them into a folder where it has no mail server.
class Mailbox {
public:
    explicit Mailbox(QString folder) : m_folder(std::move(folder)) {}

    /// How many one-time codes went to the address; invitations and other letters without one are not counted.
    [[nodiscard]] int codesTo(const std::string& address) const;
    /// The latest of them; empty without one.
    [[nodiscard]] std::string latestCode(const std::string& address) const;

private:
    [[nodiscard]] QStringList codes(const std::string& address) const;

    QString m_folder;
};
