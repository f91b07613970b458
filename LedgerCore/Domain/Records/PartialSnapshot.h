#pragma once

#include <optional>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// A `LedgerSnapshot` for programs that need of its long lists no more than `Entries`: refused where the whole would
/// be.
template <class Entries>
struct PartialSnapshot {
    Company company;
    Member currentMember;
    std::vector<Member> members;
    std::vector<Account> accounts;
    std::vector<Category> categories;
    Entries transactions;
    Json::Unread<std::vector<Attachment>> attachments;
    std::optional<Json::Unread<std::vector<TransferDestination>>> transferDestinations;
    std::optional<Json::Unread<DividendState>> dividends;
    std::optional<Json::Unread<CapitalState>> capital;
    std::optional<Json::Unread<FinancialSettings>> financialSettings;

    BOOST_DESCRIBE_CLASS(PartialSnapshot, (),
                         (company, currentMember, members, accounts, categories, transactions, attachments,
                          transferDestinations, dividends, capital, financialSettings),
                         (), ())
};
