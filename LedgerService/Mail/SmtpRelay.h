#pragma once

#include "LedgerService/Mail/MailTransport.h"

namespace LedgerService {

/// Hands messages to a mail server. Nothing leaves the machine unencrypted.
class SmtpRelay final : public MailTransport {
public:
    SmtpRelay(SmtpSettings settings, std::string sender) : m_settings(std::move(settings)), m_sender(std::move(sender))
    {
    }

    /// What is wrong with the settings, in words, or nothing.
    static std::optional<std::string> whyNot(const SmtpSettings& settings);

    std::optional<std::string> whyNotReady() override;
    Delivery deliver(const std::string& recipient, const std::string& message, const std::string& name) override;

private:
    SmtpSettings m_settings;
    std::string m_sender;
};

}
