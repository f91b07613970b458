#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerService/Commands/CompanyFounding.h"

namespace LedgerService {

/// A company with one owner, as people ask for it.
struct NewCompany {
    std::string name;
    std::vector<std::string> countries;  // ISO 3166 codes
    std::optional<std::string> timeZone; // IANA name; nothing: that of the machine
    std::string_view approvalStatus;     // an `ApprovalStatus`
    std::string createdAt;               // stamp

    /// Whoever owns it: somebody new, or a person whom the service knows by this id.
    struct Founder {
        std::string userID;
        std::string name;
        std::string email;
        std::string locale;       // a tag of `AppLanguage`
        std::string passwordHash; // of somebody new
    };

    /// The company with empty books and every right for its owner. Names are trimmed.
    [[nodiscard]] CompanyFounding foundedBy(const Founder& founder) const;
};

}
