#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "LedgerService/Refusal.h"

namespace LedgerService {

/// A receipt as it was uploaded. A large body is held once: the file is decoded where its text stood.
class ReceivedReceipt {
public:
    /// The largest body that can hold a receipt: its bytes as Base64, with its name and type.
    static constexpr std::size_t maximumBody = std::size_t{14} << 20;

    /// Reads the body, or says why it holds no receipt that is taken.
    static std::expected<ReceivedReceipt, Refusal> from(std::string body);

    [[nodiscard]] const std::string& name() const { return m_name; }
    [[nodiscard]] const std::string& mediaType() const { return m_mediaType; }
    [[nodiscard]] std::string_view content() const { return m_content; }

private:
    ReceivedReceipt() = default;

    std::string m_name;
    std::string m_mediaType;
    std::string m_content;
};

}
