#pragma once

#include <filesystem>

#include "LedgerService/Mail/MailTransport.h"

namespace LedgerService {

/// Puts each message into a folder as a file that mail programs open. The latest 1,000 stay.
class SpoolFolder final : public MailTransport {
public:
    explicit SpoolFolder(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    std::optional<std::string> whyNotReady() override;
    Delivery deliver(const std::string& recipient, const std::string& message, const std::string& name) override;

private:
    void removeOldest();

    std::filesystem::path m_folder;
};

}
