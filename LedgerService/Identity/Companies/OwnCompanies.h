#pragma once

#include <expected>
#include <string_view>

#include "LedgerCore/Domain/Records/AccessRecords.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Identity/Sessions/Authentication.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// The companies that one person belongs to.
namespace OwnCompanies {

/// Those that are open to the person, in the order in which the person joined them.
CompanyChoices choices(const CommandAct& act, const ServicePolicy& policy);

/// A person who is signed in, with the token that it goes by.
struct Visit {
    CommandAct act;
    const Service& service;
    std::string_view token;
};

/// Opens another company of the person and ends the token that was used. Expects a writing transaction.
std::expected<IssuedSession, Refusal> enter(const Visit& visit, std::string_view companyID);

/// Joins the company that the code invites to, opens it and ends the token that was used. Expects a writing
/// transaction.
std::expected<IssuedSession, Refusal> join(const Visit& visit, std::string_view code, std::string_view locale);

}

}
