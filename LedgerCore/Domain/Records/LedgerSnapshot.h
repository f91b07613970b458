#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerCore/Domain/Records/CapitalState.h"
#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerCore/Domain/Records/DividendState.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/SharedList.h"

/// An account that may receive a transfer from the member, even when the member does not see it.
struct TransferDestination {
    std::string id;
    std::string name;
    std::vector<std::string> currencies;
    bool allowsFunding = false;
    bool allowsReturn = false;

    bool operator==(const TransferDestination&) const = default;
};
BOOST_DESCRIBE_STRUCT(TransferDestination, (), (id, name, currencies, allowsFunding, allowsReturn))

using EntryList = SharedList<LedgerTransaction>;

/// All of one company that the signed-in member may see. Replaced whole, never changed in place; one that follows
/// another shares with it the entries and receipts that stayed as they were.
struct LedgerSnapshot {
    Company company;
    Member currentMember;
    std::vector<Member> members;
    std::vector<Account> accounts;
    std::vector<Category> categories;
    EntryList transactions;
    SharedList<Attachment> attachments;
    std::optional<std::vector<TransferDestination>> transferDestinations;
    std::optional<DividendState> dividends;
    std::optional<CapitalState> capital;
    std::optional<FinancialSettings> financialSettings;

    bool operator==(const LedgerSnapshot&) const = default;

    /// The account of this id, or null.
    [[nodiscard]] const Account* account(std::string_view id) const;
    /// The entry of this id, or null. Looks through all of them: whoever asks for many makes an index.
    [[nodiscard]] const LedgerTransaction* entry(std::string_view id) const;
};
BOOST_DESCRIBE_STRUCT(LedgerSnapshot, (),
                      (company, currentMember, members, accounts, categories, transactions, attachments,
                       transferDestinations, dividends, capital, financialSettings))

using SnapshotPointer = std::shared_ptr<const LedgerSnapshot>;

/// Reply to a category creation.
struct CategoryCreationResponse {
    LedgerSnapshot snapshot;
    std::string createdCategoryID;

    bool operator==(const CategoryCreationResponse&) const = default;
};
BOOST_DESCRIBE_STRUCT(CategoryCreationResponse, (), (snapshot, createdCategoryID))
