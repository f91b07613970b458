#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <set>

#include <fmt/core.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerService/Http/Routes/AllRoutes.h"
#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/Staff.h"

namespace LedgerService {

namespace {

using namespace std::string_view_literals;

/// What "rudi" has on the account "bank". Nobody but "mira" and those who view the company see "vault".
enum class OnBank { nothing, sight, everything };

/// One way of being a member.
struct Profile {
    std::string role;
    std::vector<std::string> permissions;
    OnBank onBank;

    [[nodiscard]] bool has(std::string_view permission) const
    {
        return std::ranges::find(permissions, permission) != permissions.end();
    }
    [[nodiscard]] bool manages() const { return role == "owner" || has("manageCompany"); }
    [[nodiscard]] bool seesVault() const { return has("viewCompany"); }
    [[nodiscard]] bool seesBank() const { return seesVault() || onBank != OnBank::nothing; }
    [[nodiscard]] std::string text() const
    {
        return fmt::format("{} [{}] {}", role, fmt::join(permissions, " "), static_cast<int>(onBank));
    }
};

/// Roles by the permissions that matter most and by grants, and each other permission alone.
std::vector<Profile> profiles()
{
    const std::vector<std::string> every{Permission::all.begin(), Permission::all.end()};
    const std::array<std::vector<std::string>, 4> lists{
        std::vector<std::string>{}, {"viewCompany"}, {"manageCompany"}, every};
    std::vector<Profile> all;
    for (const auto* role : {"owner", "admin", "finance", "partner", "employee"}) {
        for (const auto& list : lists) {
            all.push_back({role, list, OnBank::sight});
            if (role == "owner"sv || role == "employee"sv) {
                all.push_back({role, list, OnBank::nothing});
                all.push_back({role, list, OnBank::everything});
            }
        }
    }
    for (const auto& permission : every)
        all.push_back({"employee", {permission}, OnBank::sight});
    auto allButSight = every;
    std::erase(allButSight, std::string{Permission::viewCompany});
    all.push_back({"employee", std::move(allButSight), OnBank::everything});
    return all;
}

constexpr auto hiddenName = "Tresor Zwei";
constexpr auto hiddenNote = "geheime Notiz";
constexpr std::int64_t hiddenAmount = 7'771'237;
constexpr auto otherEmail = "mira@sample.example";

// What the answers are expected to be.
constexpr int beyond = 0; // allowed; what comes of it is another test's matter

int managers(const Profile& profile)
{
    return profile.manages() ? 200 : 403;
}
int dividendManagers(const Profile& profile)
{
    return profile.has("manageCompany") ? 200 : 403;
}
int owners(const Profile& profile)
{
    return profile.role == "owner" ? 200 : 403;
}
int managersBeyond(const Profile& profile)
{
    return profile.manages() ? beyond : 403;
}
int onBank(const Profile& profile)
{
    if (!profile.seesBank())
        return 404;
    return profile.onBank == OnBank::everything ? 200 : 403;
}
int managersOfBank(const Profile& profile)
{
    if (!profile.manages())
        return 403;
    return profile.seesBank() ? 200 : 404;
}
/// Who may change the template of somebody else that is shared with all who see "bank".
int changersOfTemplate(const Profile& profile)
{
    if (!profile.seesBank())
        return 404;
    return profile.manages() ? 200 : 403;
}
/// Who may give a receipt to an entry of somebody else; the receipt is not there.
int correctors(const Profile& profile)
{
    return onBank(profile) == 200 ? 404 : onBank(profile);
}
template <int status>
int always(const Profile&)
{
    return status;
}

/// What one route is asked in every way of being a member. "{entry}" stands for an entry on "bank" that is new each
/// time, "{key}" for a new key, "{revision}" for that of the section that the path names.
struct Row {
    std::string_view method;
    std::string_view pattern;
    std::string path;
    std::string body;
    int (*expected)(const Profile&);
};

std::string income(const std::string& accountID, std::int64_t amountMinor, const std::string& note = "")
{
    auto input = SampleBooks::income(amountMinor);
    input.targetAccountID = accountID;
    input.note = note;
    input.idempotencyKey = "{key}";
    return Json::encode(input);
}

constexpr auto begunEntry =
    R"({"entry":{"kind":"expense","date":"","note":"","currency":"IDR","targetCurrency":"","amount":"1",)"
    R"("targetAmount":"","refundReference":"","attachments":[],"idempotencyKey":"begun"},)"
    R"("locale":"en-US","writer":"window"})";
constexpr auto skippedDay = R"({"day":"2026-03-01","skipped":true})";
constexpr auto changedTemplate =
    R"({"name":"Other","shared":true,"expectedRevision":1,)"
    R"("entry":{"kind":"income","note":"","targetAccountID":"bank","currency":"IDR","amountMinor":1000}})";

/// A template of an income, due every month.
std::string recurring(const std::string& accountID, std::string_view name = "Interest",
                      std::int64_t amountMinor = 1'000)
{
    TemplateCreate command;
    command.name = name;
    command.shared = true;
    command.entry = {.kind = "income",
                     .note = "",
                     .categoryID = {},
                     .sourceAccountID = {},
                     .targetAccountID = accountID,
                     .currency = "IDR",
                     .targetCurrency = {},
                     .amountMinor = amountMinor,
                     .targetAmountMinor = {}};
    command.recurrence = {.unit = "month", .every = 1, .firstDay = "2026-03-01", .lastDay = {}};
    command.idempotencyKey = "{key}";
    return Json::encode(command);
}

std::vector<Row> furtherRows()
{
    return {
        {"GET", "/v1/snapshot", "/v1/snapshot", "", always<200>},
        {"POST", "/v1/demo", "/v1/demo", R"({"profile":"owner"})", always<403>},
        {"GET", "/v1/me/drafts", "/v1/me/drafts", "", always<200>},
        {"PUT", "/v1/me/drafts/{key}", "/v1/me/drafts/begun", begunEntry, always<200>},
        {"DELETE", "/v1/me/drafts/{key}", "/v1/me/drafts/begun?writer=window", "", always<200>},
        {"GET", "/v1/templates", "/v1/templates", "", always<200>},
        {"POST", "/v1/templates", "/v1/templates", recurring("bank"), onBank},
        {"PATCH", "/v1/templates/{id}", "/v1/templates/{template}", changedTemplate, changersOfTemplate},
        {"POST", "/v1/templates/{id}/remove", "/v1/templates/{template}/remove", "", changersOfTemplate},
        {"POST", "/v1/templates/{id}/days", "/v1/templates/{template}/days", skippedDay, onBank},
    };
}

/// Every route of the service has a row.
std::vector<Row> rows()
{
    const std::string reversal = R"({"reason":"typo","idempotencyKey":"{key}","date":"2026-03-10"})";
    const std::string visibility = R"({"action":"setVisibility","expectedRevision":{revision},"date":"2026-03-10",)"
                                   R"("idempotencyKey":"{key}","showInSidebar":true})";
    std::vector<Row> all{
        {"GET", "/health/live", "/health/live", "", always<200>},
        {"GET", "/health/ready", "/health/ready", "", always<200>},
        {"POST", "/v1/auth/login", "/v1/auth/login", R"({"email":"nobody@x.id","password":"wrong"})", always<beyond>},
        {"POST", "/v1/auth/register", "/v1/auth/register",
         R"({"name":"X","email":"{key}@x.id","password":"long enough","companyName":"Y","countries":["ID"]})",
         always<200>},
        {"POST", "/v1/auth/access/start", "/v1/auth/access/start",
         R"({"email":"nobody@x.id","invitationCode":"","purpose":"reset","locale":"en-US"})", always<200>},
        {"POST", "/v1/auth/access/verify", "/v1/auth/access/verify", R"({"challengeID":"none","code":"000000"})",
         always<400>},
        {"POST", "/v1/auth/access/complete", "/v1/auth/access/complete",
         R"({"challengeID":"none","ticket":"none","name":"X","password":"long enough","locale":"en-US"})", always<400>},
        {"POST", "/v1/me/password", "/v1/me/password",
         fmt::format(R"({{"currentPassword":"{0}","newPassword":"{0}"}})", TestService::password), always<200>},
        {"POST", "/v1/capital/commands", "/v1/capital/commands", visibility, managers},
        {"POST", "/v1/dividends/commands", "/v1/dividends/commands", visibility, dividendManagers},
        {"POST", "/v1/transactions", "/v1/transactions", income("bank", 1'000), onBank},
        {"POST", "/v1/transactions/{id}/reverse", "/v1/transactions/{entry}/reverse", reversal, onBank},
        {"POST", "/v1/transactions/{id}/attachments", "/v1/transactions/{entry}/attachments",
         R"({"attachmentIDs":["none"]})", correctors},
        {"POST", "/v1/attachments", "/v1/attachments", SampleReceipts::upload(SampleReceipts::pdf()), always<200>},
        {"GET", "/v1/attachments/{id}", "/v1/attachments/none", "", always<404>},
        {"POST", "/v1/accounts", "/v1/accounts", R"({"name":"Extra","currencies":["IDR"]})", managers},
        {"PATCH", "/v1/accounts/{id}", "/v1/accounts/bank", R"({"name":"bank"})", managersOfBank},
        {"POST", "/v1/categories", "/v1/categories",
         R"({"kind":"expense","names":{"en-US":"Paper"},"symbol":"file-text"})", managers},
        {"PATCH", "/v1/categories/{id}", "/v1/categories/rent", R"({"archived":false})", managers},
        {"POST", "/v1/categories/reorder", "/v1/categories/reorder",
         R"({"kind":"expense","orderedIDs":[],"expectedIDs":[]})", managersBeyond},
        {"POST", "/v1/financial-settings/commands", "/v1/financial-settings/commands",
         R"({"action":"configure","expectedRevision":7,"idempotencyKey":"{key}","contributionsEnabled":true,"dividendsEnabled":true})",
         managersBeyond},
        {"GET", "/v1/audit", "/v1/audit", "", owners},
        {"GET", "/v1/invites", "/v1/invites", "", managers},
        {"POST", "/v1/invites", "/v1/invites",
         R"({"name":"X","email":"x@x.id","role":"employee","accountIDs":[],"permissions":[],"accountGrants":[]})",
         managers},
        {"POST", "/v1/invites/accept", "/v1/invites/accept", R"({"code":"00000","locale":""})", always<400>},
        {"POST", "/v1/invites/{id}/revoke", "/v1/invites/none/revoke", "", managersBeyond},
        {"POST", "/v1/me/invitation", "/v1/me/invitation", R"({"code":"00000"})", always<400>},
        {"PATCH", "/v1/members/{id}", "/v1/members/rudi", "{}", managers},
        {"PATCH", "/v1/me/profile", "/v1/me/profile", R"({"name":"rudi"})", always<200>},
        {"PATCH", "/v1/me/category-preferences", "/v1/me/category-preferences",
         R"({"categoryID":"rent","selected":false})", always<200>},
        {"PATCH", "/v1/settings", "/v1/settings", R"({"name":"Sample sample"})", managers},
        {"PATCH", "/v1/company/transaction-colors", "/v1/company/transaction-colors",
         R"({"kind":"income","colorID":"teal"})", managers},
        {"GET", "/v1/me/companies", "/v1/me/companies", "", always<200>},
        {"POST", "/v1/me/companies", "/v1/me/companies", R"({"companyName":"Second","requestID":"always"})",
         always<200>},
        {"POST", "/v1/me/companies/switch", "/v1/me/companies/switch", R"({"companyID":"none"})", always<404>},
        {"POST", "/v1/auth/logout", "/v1/auth/logout", "", always<200>},
    };
    std::ranges::move(furtherRows(), std::inserter(all, all.begin())); // the last one signs out
    return all;
}

/// The sample with something to hide on "vault", where "mira" owns it and "rudi" is whoever the profile says.
struct Matrix {
    TestService service{generous};
    HttpClient client = service.client();
    std::string mira;
    std::string token;
    std::string hiddenEntry;
    std::string hiddenReceipt;
    std::string hiddenTemplate;
    std::string owner;       // of capital
    std::string participant; // in dividends
    int keys = 0;

    Matrix()
    {
        Staff::appoint(service);
        service.write([](Connection& connection) {
            connection.execute(fmt::format("UPDATE accounts SET name = '{}' WHERE id = 'vault'", hiddenName));
            connection.execute("UPDATE companies SET contributions_enabled = 1, dividends_enabled = 1");
            foundSample(connection, "other");
        });
        mira = service.tokenOf("mira");
        const auto uploaded = send(mira, "POST", "/v1/attachments", SampleReceipts::upload(SampleReceipts::pdf()));
        hiddenReceipt = Json::decode<Attachment>(uploaded.body).value_or(Attachment{}).id;
        auto input = SampleBooks::income(hiddenAmount);
        input.targetAccountID = "vault";
        input.note = hiddenNote;
        input.attachmentIDs = {hiddenReceipt};
        hiddenEntry = recorded(Json::encode(input));
        hiddenTemplate = madeTemplate(recurring("vault", hiddenName, hiddenAmount));
        addPeopleOfSections();
    }

    void become(const Profile& profile)
    {
        std::vector<AccountGrant> grants;
        if (profile.onBank == OnBank::sight)
            grants.push_back({"bank", {"view"}});
        if (profile.onBank == OnBank::everything)
            grants.push_back(Staff::every("bank"));
        Staff::set(service, "rudi", profile.role, profile.permissions, std::move(grants));
        token = service.tokenOf("rudi");
    }

    HttpAnswer send(const std::string& by, std::string_view method, std::string path, std::string body)
    {
        fill(path);
        fill(body);
        if (const auto at = body.find("{revision}"); at != std::string::npos)
            body.replace(at, 10, std::to_string(revisionOf(path)));
        return client.send(method, path, by, body);
    }

private:
    /// Limits that so many ways of asking would meet are other tests' matter.
    static void generous(ServerOptions& options)
    {
        auto& limits = options.policy.limits;
        for (auto* each : {&limits.registrationsPerAddress, &limits.codesPerPerson, &limits.codesPerAddress,
                           &limits.codeTriesPerAddress, &limits.strangersCodesPerPerson, &limits.signInsPerPerson,
                           &limits.signInsPerAddress, &limits.strangersPerPerson})
            *each = 100'000;
    }

    void addPeopleOfSections()
    {
        for (const auto* path : {"/v1/capital/commands", "/v1/dividends/commands"}) {
            const auto answer = send(mira, "POST", path,
                                     R"({"action":"setParticipant","expectedRevision":{revision},"date":"2026-03-10",)"
                                     R"("idempotencyKey":"{key}","name":"Ann"})");
            EXPECT_EQ(answer.status, 200) << answer.body;
        }
        service.write([this](Connection& connection) {
            owner = CapitalRepository::state(connection, "sample").participants.at(0).id;
            participant = DividendRepository::state(connection, "sample").participants.at(0).id;
        });
    }

    int revisionOf(std::string_view path)
    {
        int revision = 0;
        service.write([&](Connection& connection) {
            revision = path.contains("capital") ? CapitalRepository::state(connection, "sample").revision
                                                : DividendRepository::state(connection, "sample").revision;
        });
        return revision;
    }

    std::string recorded(const std::string& body)
    {
        const auto answer = send(mira, "POST", "/v1/transactions", body);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<LedgerTransaction>(answer.body).value_or(LedgerTransaction{}).id;
    }

    std::string madeTemplate(const std::string& body)
    {
        const auto answer = send(mira, "POST", "/v1/templates", body);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<EntryTemplateList>(answer.body).value_or(EntryTemplateList{}).templates.back().id;
    }

    void fill(std::string& text)
    {
        if (const auto at = text.find("{template}"); at != std::string::npos)
            text.replace(at, 10, madeTemplate(recurring("bank")));
        if (const auto at = text.find("{key}"); at != std::string::npos)
            text.replace(at, 5, fmt::format("key-{}", ++keys));
        if (const auto at = text.find("{entry}"); at != std::string::npos)
            text.replace(at, 7, recorded(income("bank", 1'000)));
    }
};

/// What the body tells of what the profile may not know. The audit trail names every record to owners, by its id only.
std::vector<std::string> told(const Matrix& matrix, const Profile& profile, std::string_view pattern,
                              const std::string& body)
{
    std::vector<std::string> secrets;
    if (!profile.seesVault())
        secrets = {hiddenName, hiddenNote, std::to_string(hiddenAmount)};
    if (!profile.seesVault() && pattern != "/v1/audit")
        secrets.insert(secrets.end(), {matrix.hiddenEntry, matrix.hiddenReceipt, matrix.hiddenTemplate});
    if (!profile.manages())
        secrets.emplace_back(otherEmail);
    std::erase_if(secrets, [&](const std::string& each) { return body.find(each) == std::string::npos; });
    return secrets;
}

/// A request that names something hidden, and the same with a name of nothing.
struct Reference {
    std::string_view method;
    std::string path; // "{id}" in path or body is what is named
    std::string body;
    std::string id;
};

/// Money of a section that arrives on an account or leaves it, with a receipt if need be.
std::string moving(std::string_view action, std::string_view who, std::string_view accountID,
                   std::string_view receipts = "")
{
    return fmt::format(R"({{"action":"{}","expectedRevision":{{revision}},"date":"2026-03-10",)"
                       R"("idempotencyKey":"{{key}}","participantID":"{}","currency":"IDR","amountMinor":5,)"
                       R"("accountID":"{}","attachmentIDs":[{}]}})",
                       action, who, accountID, receipts);
}

std::vector<Reference> references(const Matrix& matrix)
{
    auto refund = SampleBooks::refund(1'000);
    refund.sourceAccountID = "bank";
    refund.originalTransactionID = "{id}";
    refund.idempotencyKey = "{key}";
    auto transfer = SampleBooks::transfer(1'000);
    transfer.targetAccountID = "{id}";
    transfer.idempotencyKey = "{key}";
    auto receipt = SampleBooks::income(1'000);
    receipt.attachmentIDs = {"{id}"};
    receipt.idempotencyKey = "{key}";
    const std::string reversal = R"({"reason":"typo","idempotencyKey":"{key}","date":"2026-03-10"})";
    const std::string grant = R"({"accountGrants":[{"accountID":"{id}","actions":["income"]}]})";
    return {
        {"POST", "/v1/transactions", income("{id}", 1'000), "vault"},
        {"POST", "/v1/transactions", Json::encode(transfer), "vault"},
        {"POST", "/v1/transactions", Json::encode(refund), matrix.hiddenEntry},
        {"POST", "/v1/transactions", Json::encode(receipt), matrix.hiddenReceipt},
        {"POST", "/v1/transactions/{id}/reverse", reversal, matrix.hiddenEntry},
        {"POST", "/v1/transactions/{id}/attachments", R"({"attachmentIDs":["none"]})", matrix.hiddenEntry},
        {"POST", "/v1/transactions/{entry}/attachments", R"({"attachmentIDs":["{id}"]})", matrix.hiddenReceipt},
        {"GET", "/v1/attachments/{id}", "", matrix.hiddenReceipt},
        {"PATCH", "/v1/members/guest", grant, "vault"},
        {"PATCH", "/v1/members/guest", R"({"accountIDs":["{id}"]})", "vault"},
        {"POST", "/v1/invites",
         R"({"name":"X","email":"x@x.id","role":"employee","accountIDs":["{id}"],"permissions":[],"accountGrants":[]})",
         "vault"},
        {"PATCH", "/v1/accounts/{id}", R"({"name":"x"})", "vault"},
        {"POST", "/v1/accounts",
         R"({"name":"Float","currencies":["IDR"],"purpose":"employee","operatorMemberID":"rudi","returnAccountID":"{id}"})",
         "vault"},
        {"POST", "/v1/templates", recurring("{id}"), "vault"},
        {"PATCH", "/v1/templates/{id}", changedTemplate, matrix.hiddenTemplate},
        {"POST", "/v1/templates/{id}/remove", "", matrix.hiddenTemplate},
        {"POST", "/v1/templates/{id}/days", skippedDay, matrix.hiddenTemplate},
        {"POST", "/v1/capital/commands", moving("contribute", matrix.owner, "{id}"), "vault"},
        {"POST", "/v1/capital/commands", moving("contribute", matrix.owner, "bank", R"("{id}")"), matrix.hiddenReceipt},
        {"POST", "/v1/dividends/commands", moving("advance", matrix.participant, "{id}"), "vault"},
        {"POST", "/v1/dividends/commands", moving("advance", matrix.participant, "bank", R"("{id}")"),
         matrix.hiddenReceipt},
        {"POST", "/v1/me/companies/switch", R"({"companyID":"{id}"})", "other"},
    };
}

std::string naming(std::string text, std::string_view id)
{
    if (const auto at = text.find("{id}"); at != std::string::npos)
        text.replace(at, 4, id);
    return text;
}

}

TEST(RightsMatrix, HasARowForEveryRoute)
{
    std::set<std::pair<std::string_view, std::string_view>> asked;
    const auto all = rows();
    for (const auto& row : all)
        asked.emplace(row.method, row.pattern);
    for (const auto& route : allRoutes())
        EXPECT_TRUE(asked.contains({route.method, route.pattern}))
            << route.method << " " << route.pattern << " has no row: say who may ask it";
}

TEST(RightsMatrix, AnswersEveryoneAsTheirRightsSayAndTellsNobodyMore)
{
    Matrix matrix;
    const auto all = rows();
    int cells = 0;
    for (const auto& profile : profiles()) {
        matrix.become(profile);
        for (const auto& row : all) {
            const auto answer = matrix.send(matrix.token, row.method, row.path, row.body);
            const auto expected = row.expected(profile);
            const auto where =
                fmt::format("{} {} as {}: {}", row.method, row.path, profile.text(), answer.body.substr(0, 200));
            if (expected == beyond)
                EXPECT_TRUE(answer.status != 403 && answer.status < 500) << answer.status << " " << where;
            else
                EXPECT_EQ(answer.status, expected) << where;
            EXPECT_EQ(told(matrix, profile, row.pattern, answer.body), std::vector<std::string>{}) << where;
            ++cells;
        }
    }
    EXPECT_GT(cells, 1'200);
    EXPECT_EQ(matrix.service.problems(), "");
}

TEST(RightsMatrix, DoesNotTellWhatIsHiddenFromWhatIsNotThere)
{
    Matrix matrix;
    int compared = 0;
    for (const auto& profile : profiles()) {
        if (profile.seesVault() || profile.role == "finance" || profile.role == "partner")
            continue;
        matrix.become(profile);
        for (const auto& each : references(matrix)) {
            const auto ask = [&](std::string_view id) {
                return matrix.send(matrix.token, each.method, naming(each.path, id), naming(each.body, id));
            };
            const auto hidden = ask(each.id);
            const auto nothing = ask("nothing-of-this-name");
            const auto where = fmt::format("{} {} {} as {}", each.method, each.path, each.body, profile.text());
            EXPECT_GE(nothing.status, 400) << where;
            EXPECT_EQ(hidden.status, nothing.status) << where;
            EXPECT_EQ(hidden.body, nothing.body) << where;
            ++compared;
        }
    }
    EXPECT_GT(compared, 150);
}

}
