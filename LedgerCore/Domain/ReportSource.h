#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Account.h"
#include "LedgerCore/Domain/Category.h"
#include "LedgerCore/Domain/Company.h"
#include "LedgerCore/Domain/Json.h"
#include "LedgerCore/Domain/Member.h"

/// A `LedgerLeg` as reports read it.
struct ReportLeg {
    std::string_view accountID;
    std::string_view currency;
    std::int64_t amountMinor = 0; // minor units of `currency`
};
BOOST_DESCRIBE_STRUCT(ReportLeg, (), (accountID, currency, amountMinor))

/// A `LedgerTransaction` as reports read it, a fifth of its size.
struct ReportEntry {
    std::string_view id;
    std::string_view kind;
    std::string_view date;
    Json::UnreadText note;
    Json::UnreadText createdAt;
    Json::UnreadText memberID;
    std::optional<std::string_view> categoryID;
    std::vector<ReportLeg> legs;
    Json::UnreadList attachmentIDs;
    std::optional<std::string_view> reversalOf;
    std::optional<std::string_view> originalTransactionID;
};
BOOST_DESCRIBE_STRUCT(ReportEntry, (),
                      (id, kind, date, note, createdAt, memberID, categoryID, legs, attachmentIDs, reversalOf,
                       originalTransactionID))

/// The part of a `LedgerSnapshot` that reports read, for programs that need no more of it. Its texts point into the
/// JSON that `Json::view` read it from.
struct ReportSource {
    Company company;
    Member currentMember;
    std::vector<Member> members;
    std::vector<Account> accounts;
    std::vector<Category> categories;
    std::vector<ReportEntry> transactions;
    Json::UnreadList attachments;
};
BOOST_DESCRIBE_STRUCT(ReportSource, (),
                      (company, currentMember, members, accounts, categories, transactions, attachments))
