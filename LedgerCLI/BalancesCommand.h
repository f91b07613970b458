#pragma once

#include <vector>

#include <boost/describe.hpp>

#include "LedgerCLI/CommandAnswer.h"
#include "LedgerCore/Domain/Account.h"
#include "LedgerCore/Domain/Category.h"
#include "LedgerCore/Domain/Company.h"
#include "LedgerCore/Domain/Json.h"
#include "LedgerCore/Domain/Member.h"

namespace BalancesCommand {

/// A `LedgerSnapshot` without its long lists: accounts say themselves what they hold.
struct Source {
    Company company;
    Member currentMember;
    std::vector<Member> members;
    std::vector<Account> accounts;
    std::vector<Category> categories;
    Json::UnreadList transactions;
    Json::UnreadList attachments;
};
BOOST_DESCRIBE_STRUCT(Source, (), (company, currentMember, members, accounts, categories, transactions, attachments))

/// What each account holds in each of its currencies, in snapshot order.
CommandAnswer run(const Source& source, const OutputStyle& style);

}
