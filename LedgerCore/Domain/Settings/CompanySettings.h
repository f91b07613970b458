#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"

/// What may be changed about a company beside its finances.
namespace CompanySettings {

enum class Refusal {
    notManager, // the name and the countries are for those who manage the company
    name,
    countries, // codes of two capital letters, each once
    locale,    // one of `AppLanguage`
};

/// Whether a company can be in these countries: codes of two capital letters, each once.
bool areCountries(std::vector<std::string> codes);

/// What keeps the member from this change, or nothing. Everybody chooses the language in which they are written to.
std::optional<Refusal> whyNot(const SettingsUpdate& update, const Member& member);

}
