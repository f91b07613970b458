#pragma once

#include <optional>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/Json.h"
#include "LedgerCore/Domain/LedgerSnapshot.h"

namespace BalancesCommand {

/// A `LedgerSnapshot` without its long lists, refused where the whole would be: accounts say themselves what they hold.
struct Source {
    Company company;
    Member currentMember;
    std::vector<Member> members;
    std::vector<Account> accounts;
    std::vector<Category> categories;
    Json::Unread<std::vector<LedgerTransaction>> transactions;
    Json::Unread<std::vector<Attachment>> attachments;
    std::optional<Json::Unread<std::vector<TransferDestination>>> transferDestinations;
    std::optional<Json::Unread<DividendState>> dividends;
    std::optional<Json::Unread<CapitalState>> capital;
    std::optional<Json::Unread<FinancialSettings>> financialSettings;
};
BOOST_DESCRIBE_STRUCT(Source, (),
                      (company, currentMember, members, accounts, categories, transactions, attachments,
                       transferDestinations, dividends, capital, financialSettings))

/// What each account holds in each of its currencies, in snapshot order.
CommandAnswer run(const Source& source, const OutputStyle& style);

}
