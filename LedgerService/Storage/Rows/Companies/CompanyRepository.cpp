#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"

#include "LedgerService/Storage/Rows/Entries/FragmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/SnapshotKeys.h"
#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns companyColumns{column("id", &Company::id),
                                 column("name", &Company::name),
                                 column("countries", &Company::countries),
                                 column("enabled_locales", &Company::enabledLocales),
                                 column("created_at", &Company::createdAt),
                                 column("approval_status", &Company::approvalStatus),
                                 column("transaction_colors", &Company::transactionColors)};

constexpr Columns settingsColumns{column("settings_revision", &FinancialSettings::revision),
                                  column("contributions_enabled", &FinancialSettings::contributionsEnabled),
                                  column("dividends_enabled", &FinancialSettings::dividendsEnabled),
                                  column("bookkeeping_start_date", &FinancialSettings::bookkeepingStartDate),
                                  column("initialization_mode", &FinancialSettings::initializationMode),
                                  column("initialized_at", &FinancialSettings::initializedAt),
                                  column("features_configured", &FinancialSettings::featuresConfigured)};

const auto selectCompany = companyColumns.select(", demo_version, demo_locale FROM companies WHERE id = :company");
const auto selectSettings = settingsColumns.select("FROM companies WHERE id = :company");
const auto updateSettings = settingsColumns.update("companies", "id = :company");
const auto updateCompany = companyColumns.update("companies", "id = :id");
const auto insertCompany = companyColumns.insert("companies", {{"demo_version", ":demo_version"},
                                                               {"demo_locale", ":demo_locale"},
                                                               {"last_sequence", "0"},
                                                               {"settings_revision", "0"},
                                                               {"contributions_enabled", "0"},
                                                               {"dividends_enabled", "0"},
                                                               {"number", "(SELECT COALESCE(MAX(number), 0) + 1 "
                                                                          "FROM companies)"},
                                                               {"fragments_shape", ":shape"}});

constexpr auto selectDemo = R"sql(
    SELECT id FROM companies WHERE demo_locale = :locale AND demo_visitor_at IS NULL
)sql";

constexpr auto selectAll = R"sql(
    SELECT id FROM companies ORDER BY created_at, id
)sql";

constexpr auto countPending = R"sql(
    SELECT COUNT(*) FROM companies WHERE approval_status = 'pending'
)sql";

constexpr auto updateApproval = R"sql(
    UPDATE companies SET approval_status = :status WHERE id = :company
)sql";

constexpr auto selectTimeZone = R"sql(
    SELECT time_zone FROM companies WHERE id = :company
)sql";

constexpr auto updateTimeZone = R"sql(
    UPDATE companies SET time_zone = :zone WHERE id = :company
)sql";

}

std::optional<Company> CompanyRepository::find(Connection& connection, std::string_view companyID)
{
    std::optional<int> demoVersion;
    std::optional<std::string> demoLocale;
    Query query{connection, selectCompany};
    RowReader<Company, decltype(companyColumns)> reader{query, companyColumns};
    if (!query.bind("company", companyID).into(demoVersion).into(demoLocale).next())
        return std::nullopt;
    auto& company = reader.record();
    if (demoLocale)
        company.demo = DemoDescriptor{demoVersion.value_or(0), *demoLocale};
    return std::move(company);
}

std::optional<FinancialSettings> CompanyRepository::settings(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectSettings};
    return recordOf<FinancialSettings>(query.bind("company", companyID), settingsColumns);
}

std::optional<std::string> CompanyRepository::demoCompanyID(Connection& connection, std::string_view locale)
{
    std::string id;
    Query query{connection, selectDemo};
    query.bind("locale", locale).into(id);
    return query.next() ? std::optional{id} : std::nullopt;
}

int CompanyRepository::pendingCount(Connection& connection)
{
    int count = 0;
    Query{connection, countPending}.into(count).next();
    return count;
}

void CompanyRepository::writeApproval(Connection& connection, std::string_view companyID,
                                      const std::optional<std::string>& approvalStatus)
{
    Query{connection, updateApproval}.bind("status", approvalStatus).bind("company", companyID).run();
}

std::optional<std::string> CompanyRepository::timeZone(Connection& connection, std::string_view companyID)
{
    std::optional<std::string> zone;
    Query query{connection, selectTimeZone};
    query.bind("company", companyID).into(zone).next();
    return zone;
}

void CompanyRepository::writeTimeZone(Connection& connection, std::string_view companyID,
                                      const std::optional<std::string>& name)
{
    Query{connection, updateTimeZone}.bind("zone", name).bind("company", companyID).run();
}

std::vector<std::string> CompanyRepository::allIDs(Connection& connection)
{
    std::vector<std::string> all;
    std::string id;
    Query query{connection, selectAll};
    query.into(id);
    while (query.next())
        all.push_back(id);
    return all;
}

void CompanyRepository::insert(Connection& connection, const Company& company, const FinancialSettings& settings)
{
    Query query{connection, insertCompany};
    companyColumns.bind(query, company);
    query.bind("demo_version", company.demo ? std::optional{company.demo->version} : std::nullopt);
    query.bind("demo_locale", company.demo ? std::optional{company.demo->locale} : std::nullopt);
    query.bind("shape", FragmentRepository::shape()).run();
    SnapshotKeys::draw(connection, company.id);
    writeSettings(connection, company.id, settings);
}

void CompanyRepository::write(Connection& connection, const Company& company)
{
    Query query{connection, updateCompany};
    companyColumns.bind(query, company);
    query.run();
}

void CompanyRepository::writeSettings(Connection& connection, std::string_view companyID,
                                      const FinancialSettings& settings)
{
    Query query{connection, updateSettings};
    settingsColumns.bind(query.bind("company", companyID), settings);
    query.run();
}

}
