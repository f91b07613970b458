#include "LedgerService/Storage/Rows/CompanyRepository.h"

#include "LedgerService/Storage/Rows/FragmentRepository.h"
#include "LedgerService/Storage/Sql/JsonColumn.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectCompany = R"sql(
    SELECT id, name, countries, enabled_locales, created_at, approval_status, transaction_colors,
           demo_version, demo_locale
    FROM companies WHERE id = :company
)sql";

constexpr auto selectSettings = R"sql(
    SELECT settings_revision, contributions_enabled, dividends_enabled, bookkeeping_start_date,
           initialization_mode, initialized_at, features_configured
    FROM companies WHERE id = :company
)sql";

constexpr auto selectDemo = R"sql(
    SELECT id FROM companies WHERE demo_locale = :locale
)sql";

constexpr auto selectAll = R"sql(
    SELECT id FROM companies ORDER BY created_at, id
)sql";

constexpr auto insertCompany = R"sql(
    INSERT INTO companies (id, name, countries, enabled_locales, created_at, approval_status, transaction_colors,
                           demo_version, demo_locale, last_sequence, settings_revision, contributions_enabled,
                           dividends_enabled, bookkeeping_start_date, initialization_mode, initialized_at,
                           features_configured, number, fragments_shape)
    VALUES (:id, :name, :countries, :locales, :created, :approval, :colors, :demo_version, :demo_locale, 0, :revision,
            :contributions, :dividends, :start_date, :mode, :initialized, :configured,
            (SELECT COALESCE(MAX(number), 0) + 1 FROM companies), :shape)
)sql";

}

std::optional<Company> CompanyRepository::find(Connection& connection, std::string_view companyID)
{
    Company company;
    std::string countries;
    std::string locales;
    std::optional<std::string> colors;
    std::optional<int> demoVersion;
    std::optional<std::string> demoLocale;
    Query query{connection, selectCompany};
    query.bind("company", companyID).into(company.id).into(company.name).into(countries).into(locales);
    query.into(company.createdAt).into(company.approvalStatus).into(colors).into(demoVersion).into(demoLocale);
    if (!query.next())
        return std::nullopt;
    company.countries = JsonColumn::read<std::vector<std::string>>(countries);
    company.enabledLocales = JsonColumn::read<std::vector<std::string>>(locales);
    company.transactionColors = JsonColumn::read<TextMap>(colors);
    if (demoLocale)
        company.demo = DemoDescriptor{demoVersion.value_or(0), *demoLocale};
    return company;
}

std::optional<FinancialSettings> CompanyRepository::settings(Connection& connection, std::string_view companyID)
{
    FinancialSettings settings;
    Query query{connection, selectSettings};
    query.bind("company", companyID).into(settings.revision).into(settings.contributionsEnabled);
    query.into(settings.dividendsEnabled).into(settings.bookkeepingStartDate).into(settings.initializationMode);
    query.into(settings.initializedAt).into(settings.featuresConfigured);
    return query.next() ? std::optional{settings} : std::nullopt;
}

std::optional<std::string> CompanyRepository::demoCompanyID(Connection& connection, std::string_view locale)
{
    std::string id;
    Query query{connection, selectDemo};
    query.bind("locale", locale).into(id);
    return query.next() ? std::optional{id} : std::nullopt;
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
    const auto flag = [](const std::optional<bool>& set) { return set ? std::optional<int>{*set} : std::nullopt; };
    Query{connection, insertCompany}
        .bind("id", company.id)
        .bind("name", company.name)
        .bind("countries", Json::encode(company.countries))
        .bind("locales", Json::encode(company.enabledLocales))
        .bind("created", company.createdAt)
        .bind("approval", company.approvalStatus)
        .bind("colors", JsonColumn::write(company.transactionColors))
        .bind("demo_version", company.demo ? std::optional{company.demo->version} : std::nullopt)
        .bind("demo_locale", company.demo ? std::optional{company.demo->locale} : std::nullopt)
        .bind("revision", settings.revision)
        .bind("contributions", settings.contributionsEnabled)
        .bind("dividends", settings.dividendsEnabled)
        .bind("start_date", settings.bookkeepingStartDate)
        .bind("mode", settings.initializationMode)
        .bind("initialized", settings.initializedAt)
        .bind("configured", flag(settings.featuresConfigured))
        .bind("shape", FragmentRepository::shape())
        .run();
}

}
