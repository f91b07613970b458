#include "LedgerService/Storage/Rows/Companies/TemplateRepository.h"

#include <unordered_map>
#include <utility>

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

/// A field of the template inside its row, and of the day inside its.
template <auto field>
constexpr auto kept = [](auto& stored) -> auto& { return stored.kept.*field; };
template <auto field>
constexpr auto settledField = [](auto& stored) -> auto& { return stored.settled.*field; };

constexpr Columns columns{column("id", kept<&EntryTemplate::id>),
                          column("member_id", kept<&EntryTemplate::memberID>),
                          column("name", kept<&EntryTemplate::name>),
                          column("shared", kept<&EntryTemplate::shared>),
                          column("entry", kept<&EntryTemplate::entry>),
                          column("recurrence", kept<&EntryTemplate::recurrence>),
                          column("revision", kept<&EntryTemplate::revision>),
                          column("created_at", &StoredTemplate::createdAt),
                          column("removed_at", &StoredTemplate::removedAt)};

constexpr Columns dayColumns{column("template_id", &StoredDay::templateID),
                             column("day", settledField<&SettledDay::day>),
                             column("entry_id", settledField<&SettledDay::entryID>),
                             column("member_id", &StoredDay::memberID), column("settled_at", &StoredDay::at)};

const auto selectTemplate = columns.select("FROM entry_templates WHERE company_id = :company AND id = :template");
const auto selectTemplates =
    columns.select("FROM entry_templates WHERE company_id = :company AND removed_at IS NULL ORDER BY position");
const auto insertTemplate = columns.insert(
    "entry_templates",
    {{"company_id", ":company"}, {"position", "(SELECT COUNT(*) FROM entry_templates WHERE company_id = :company)"}});
const auto updateTemplate = columns.update("entry_templates", "company_id = :company AND id = :id");

const auto selectDay =
    dayColumns.select("FROM template_days WHERE company_id = :company AND template_id = :template AND day = :day");
const auto selectDays =
    dayColumns.select("FROM template_days WHERE company_id = :company AND day >= :first ORDER BY template_id, day");
const auto insertDay = dayColumns.insert("template_days", {{"company_id", ":company"}});

constexpr auto countTemplates = R"sql(
    SELECT COUNT(*) FROM entry_templates
    WHERE company_id = :company AND member_id = :member AND removed_at IS NULL
)sql";

constexpr auto deleteDay = R"sql(
    DELETE FROM template_days WHERE company_id = :company AND template_id = :template AND day = :day
)sql";

}

std::optional<StoredTemplate> TemplateRepository::find(Connection& connection, std::string_view companyID,
                                                       std::string_view templateID)
{
    Query query{connection, selectTemplate};
    query.bind("company", companyID).bind("template", templateID);
    return recordOf<StoredTemplate>(query, columns);
}

std::vector<EntryTemplate> TemplateRepository::all(Connection& connection, std::string_view companyID,
                                                   std::string_view firstDay)
{
    std::unordered_map<std::string, std::vector<SettledDay>> days;
    {
        Query query{connection, selectDays};
        query.bind("company", companyID).bind("first", firstDay);
        for (auto& each : recordsOf<StoredDay>(query, dayColumns))
            days[each.templateID].push_back(std::move(each.settled));
    }
    Query query{connection, selectTemplates};
    query.bind("company", companyID);
    std::vector<EntryTemplate> templates;
    for (auto& each : recordsOf<StoredTemplate>(query, columns)) {
        each.kept.settled = std::move(days[each.kept.id]);
        templates.push_back(std::move(each.kept));
    }
    return templates;
}

int TemplateRepository::countOf(Connection& connection, std::string_view companyID, std::string_view memberID)
{
    int count = 0;
    Query query{connection, countTemplates};
    query.bind("company", companyID).bind("member", memberID).into(count).next();
    return count;
}

void TemplateRepository::insert(Connection& connection, std::string_view companyID, const StoredTemplate& stored)
{
    Query query{connection, insertTemplate};
    columns.bind(query.bind("company", companyID), stored);
    query.run();
}

void TemplateRepository::update(Connection& connection, std::string_view companyID, const StoredTemplate& stored)
{
    Query query{connection, updateTemplate};
    columns.bind(query.bind("company", companyID), stored);
    query.run();
}

std::optional<SettledDay> TemplateRepository::day(Connection& connection, std::string_view companyID,
                                                  std::string_view templateID, std::string_view day)
{
    Query query{connection, selectDay};
    query.bind("company", companyID).bind("template", templateID).bind("day", day);
    auto found = recordOf<StoredDay>(query, dayColumns);
    return found ? std::optional{std::move(found->settled)} : std::nullopt;
}

void TemplateRepository::settle(Connection& connection, std::string_view companyID, const StoredDay& day)
{
    open(connection, companyID, day.templateID, day.settled.day);
    Query query{connection, insertDay};
    dayColumns.bind(query.bind("company", companyID), day);
    query.run();
}

void TemplateRepository::open(Connection& connection, std::string_view companyID, std::string_view templateID,
                              std::string_view day)
{
    Query query{connection, deleteDay};
    query.bind("company", companyID).bind("template", templateID).bind("day", day).run();
}

}
