#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Account.h"
#include "LedgerCore/Domain/Category.h"
#include "LedgerCore/Domain/Company.h"
#include "LedgerCore/Domain/FinancialSettings.h"
#include "LedgerCore/Domain/LedgerTransaction.h"
#include "LedgerCore/Domain/Member.h"

class Connection;

/// A member who comes with the company, as a person new to the service.
struct FoundingMember {
    Member member;
    std::string passwordHash;
    std::optional<std::string> demoProfile; // in demonstration companies only
};

/// A new company with all that it starts with.
struct CompanyFounding {
    Company company;
    FinancialSettings settings;
    std::vector<FoundingMember> members;
    std::vector<Account> accounts; // with the balances that `entries` lead to
    std::vector<Category> categories;
    std::vector<LedgerTransaction> entries; // in the order of recording

    /// Writes it all; expects a writing transaction. Throws when an address or id is taken.
    void write(Connection& connection) const;
};
