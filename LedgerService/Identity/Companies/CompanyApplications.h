#pragma once

#include <expected>

#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// Further companies of people who are signed in.
namespace CompanyApplications {

/// The most that one person may ask for within a day.
inline constexpr int mostADay = 5;

/// Founds a company that the person owns and that waits for the operator's review, or is open at once where the
/// service says so. The same request of the same person leads to the same company. Expects a writing transaction.
std::expected<PendingCompanyRegistration, Refusal> apply(const CommandAct& act, const Service& service,
                                                         const CompanyApplication& application);

}

}
