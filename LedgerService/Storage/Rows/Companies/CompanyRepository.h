#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"

namespace LedgerService {

class Connection;

namespace CompanyRepository {

std::optional<Company> find(Connection& connection, std::string_view companyID);

std::optional<FinancialSettings> settings(Connection& connection, std::string_view companyID);

/// The demonstration company that visitors share, by the language that its data was written in.
std::optional<std::string> demoCompanyID(Connection& connection, std::string_view locale);

/// Every company of the service, oldest first.
std::vector<std::string> allIDs(Connection& connection);

/// How many wait for the operator's review.
int pendingCount(Connection& connection);

void writeApproval(Connection& connection, std::string_view companyID,
                   const std::optional<std::string>& approvalStatus);

/// The time zone whose days the company keeps its books by; nothing for that of the machine.
std::optional<std::string> timeZone(Connection& connection, std::string_view companyID);

void writeTimeZone(Connection& connection, std::string_view companyID, const std::optional<std::string>& name);

void insert(Connection& connection, const Company& company, const FinancialSettings& settings);

/// Writes what the company's record says now, but for what makes it a demonstration.
void write(Connection& connection, const Company& company);

void writeSettings(Connection& connection, std::string_view companyID, const FinancialSettings& settings);

}

}
