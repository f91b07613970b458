#pragma once

#include <expected>
#include <memory>
#include <optional>
#include <string>

namespace LedgerService {

/// How mail leaves the service. Used by several threads at once.
class MailTransport {
public:
    virtual ~MailTransport() = default;

    enum class Delivery {
        delivered,
        refused, // this one: another try would end the same way
        failed,  // try again later
    };

    /// What keeps mail from being sent now, in words for the log, or nothing. Sends none.
    virtual std::optional<std::string> whyNotReady() = 0;

    /// Sends the message. `name` is unique, and fit for the name of a file.
    virtual Delivery deliver(const std::string& recipient, const std::string& message, const std::string& name) = 0;
};

/// The mail server that takes the service's mail.
struct SmtpSettings {
    std::string url; // smtps://mail.example.com, or smtp://mail.example.com:587, which is then made secure by STARTTLS
    std::string user;
    std::string password;
    std::string authorities; // file of certificates that are trusted instead of the system's; may be empty
};

/// How the operator wants mail to leave. Neither folder nor server: it does not.
struct MailSettings {
    std::string sender = "tallyfold@localhost";
    std::string spoolFolder;
    SmtpSettings smtp;

    /// The way that is set, null when there is none, or in words what is wrong with it.
    [[nodiscard]] std::expected<std::unique_ptr<MailTransport>, std::string> transport() const;
};

}
