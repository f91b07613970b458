#include "LedgerService/Operations/Databases/KeptRecords.h"

#include <array>
#include <string_view>

#include <fmt/core.h>

#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

template <class Record>
bool holds(const std::string& text)
{
    return Json::decode<Record>(text).has_value();
}

struct Place {
    std::string_view table;
    std::string_view named; // the row, in words
    std::string_view column;
    bool (*isRecord)(const std::string& text);
};

constexpr std::string_view ofTemplate = "'template ' || id";
constexpr std::string_view ofDraft = "'member ' || member_id || ': draft ' || idempotency_key";
constexpr std::string_view ofInvitation = "'invitation ' || id";

constexpr std::array places{
    Place{"entry_templates", ofTemplate, "entry", &holds<TemplateEntry>},
    Place{"entry_templates", ofTemplate, "recurrence", &holds<Recurrence>},
    Place{"entry_drafts", ofDraft, "entry", &holds<TransactionDraft>},
    Place{"entry_drafts", ofDraft, "sent", &holds<TransactionInput>},
    Place{"invitations", ofInvitation, "account_ids", &holds<decltype(Invite::accountIDs)>},
    Place{"invitations", ofInvitation, "permissions", &holds<decltype(Invite::permissions)>},
    Place{"invitations", ofInvitation, "account_grants", &holds<decltype(Invite::accountGrants)>},
};

constexpr auto selectTexts =
    "SELECT company_id, {0}, {1} FROM {2} WHERE {1} IS NOT NULL ORDER BY company_id, {0}"; // one of `places`

}

std::vector<std::string> KeptRecords::broken(Connection& connection)
{
    std::vector<std::string> found;
    for (const auto& place : places) {
        std::string companyID;
        std::string record;
        std::string text;
        Query query{connection, fmt::format(selectTexts, place.named, place.column, place.table)};
        query.into(companyID).into(record).into(text);
        while (query.next()) {
            if (!place.isRecord(text))
                found.push_back(fmt::format("company {}: {}: its {} is not what was written to it", companyID, record,
                                            place.column));
        }
    }
    return found;
}

}
