#pragma once

#include <expected>
#include <string_view>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// The companies that one person belongs to.
namespace OwnCompanies {

/// Those that are open to the person, in the order in which the person joined them.
CompanyChoices choices(const CommandAct& act, const ServicePolicy& policy);

/// A person who is signed in.
struct Visit {
    CommandAct act;
    const Service& service;
};

/// Opens another company of the person. The token that was used stays in force: the reply may be lost, and its holder
/// would have none. Expects a writing transaction.
std::expected<IssuedSession, Refusal> enter(const Visit& visit, std::string_view companyID);

/// Joins the company that the code invites to and opens it as `enter` does. The same code opens it once more to the
/// person who joined by it. Expects a writing transaction.
std::expected<IssuedSession, Refusal> join(const Visit& visit, std::string_view code, std::string_view locale);

}

}
