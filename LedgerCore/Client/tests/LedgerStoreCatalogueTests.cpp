#include <functional>

#include <gtest/gtest.h>

#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Client/testing/Failed.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerCore/Domain/Exports/LedgerExportAuthorization.h"
#include "LedgerCore/Domain/Exports/ReportExportAuthorization.h"
#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"
#include "LedgerCore/Domain/Records/Requests/DividendCommand.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"

namespace {

const auto books = snapshot().account("bank", {"USD"}).grantAll().income("t1", "2026-11-01", "bank", "USD", 500);
const auto newerBooks = SnapshotBuilder{books}.companyName("Renamed");

TransactionInput income(const std::string& key)
{
    TransactionInput input;
    input.kind = "income";
    input.date = "2026-11-20";
    input.targetAccountID = "bank";
    input.currency = "USD";
    input.amountMinor = 100;
    input.idempotencyKey = key;
    return input;
}

enum class Ending { snapshot, reload, record };

struct Operation {
    const char* name;
    std::function<QCoro::Task<Result<void>>(LedgerStore&)> run;
    std::string route;
    std::string body;  // as it goes over the wire
    std::string reply; // of an operation that gives a record
    Ending ending;
    bool givesWay = false; // does nothing, and says nothing, while another one runs
};

void PrintTo(const Operation& operation, std::ostream* stream)
{
    *stream << operation.name;
}

using Store = LedgerStore;

CapitalCommand capitalCommand()
{
    CapitalCommand command;
    command.action = "setOwnership";
    command.expectedRevision = 3;
    command.date = "2026-11-20";
    command.idempotencyKey = "k1";
    return command;
}

DividendCommand dividendCommand()
{
    DividendCommand command;
    command.action = "pay";
    command.expectedRevision = 4;
    command.date = "2026-11-20";
    command.idempotencyKey = "k2";
    return command;
}

FinancialSettingsCommand settingsCommand()
{
    FinancialSettingsCommand command;
    command.action = "configure";
    command.expectedRevision = 5;
    command.idempotencyKey = "k3";
    command.dividendsEnabled = true;
    return command;
}

const std::string invitations =
    R"({"invitations":[{"id":"i1","name":"Rini","email":"r@x.id","role":"finance","permissions":[],)"
    R"("accountGrants":[],"createdAt":"2026-11-20T00:00:00.000Z","expiresAt":"2026-11-27T00:00:00.000Z",)"
    R"("status":"pending"}]})";

TemplateCreate rent()
{
    TemplateCreate created;
    created.name = "Rent";
    created.shared = true;
    created.entry.kind = "expense";
    created.entry.sourceAccountID = "bank";
    created.entry.currency = "USD";
    created.entry.amountMinor = 900;
    created.recurrence = {.unit = "month", .every = 1, .firstDay = "2026-11-30", .lastDay = {}};
    created.idempotencyKey = "k4";
    return created;
}

LedgerExportScope wholeNovember()
{
    LedgerExportScope scope;
    scope.startDate = "2026-11-01";
    scope.endDate = "2026-11-30";
    scope.kinds = {"income"};
    scope.includesAllVisibleAccounts = scope.includesAllVisibleCurrencies = true;
    return scope;
}

LedgerExportRequest exportOf(const LedgerSnapshot& snapshot)
{
    return LedgerExportRequest::create(snapshot, wholeNovember(), "en-US").value();
}

ReportExportAuthorization reportOf(const LedgerSnapshot& snapshot)
{
    return ReportExportAuthorization::create(snapshot, "USD", {}).value();
}

const std::string templates =
    R"({"templates":[{"id":"t1","memberID":"m1","name":"Rent","shared":false,"entry":{"kind":"expense","note":"",)"
    R"("sourceAccountID":"bank","currency":"USD"},"revision":1,"settled":[]}]})";

const std::vector<Operation> operations{
    {"CreateAccount",
     [](Store& store) {
         AccountCreate account;
         account.name = "Kas";
         account.currencies = {"IDR", "USD"};
         account.ownerMemberID = "m3";
         account.operatorMemberID = "m2";
         account.purpose = "funding";
         account.returnAccountID = "bank";
         account.fundingMemberIDs = std::vector<std::string>{"m4", "m5"};
         return store.createAccount(account);
     },
     "POST v1/accounts",
     R"({"name":"Kas","currencies":["IDR","USD"],"ownerMemberID":"m3","operatorMemberID":"m2","purpose":"funding",)"
     R"("returnAccountID":"bank","fundingMemberIDs":["m4","m5"]})",
     "", Ending::snapshot},
    {"UpdateAccount",
     [](Store& store) {
         AccountUpdate update;
         update.addCurrencies = {{"VND"}};
         update.acknowledgeCurrencyAccess = true;
         return store.updateAccount("a1", update);
     },
     "PATCH v1/accounts/a1", R"({"addCurrencies":["VND"],"acknowledgeCurrencyAccess":true})", "", Ending::snapshot},
    {"UpdateAccountsPeople",
     [](Store& store) {
         AccountUpdate update;
         update.name = "Kas";
         update.purpose = "funding";
         update.operatorMemberID = "m2";
         update.returnAccountID = "bank";
         update.fundingMemberIDs = {{"m4"}};
         update.acknowledgeHistoryAccess = true;
         return store.updateAccount("a1", update);
     },
     "PATCH v1/accounts/a1",
     R"({"name":"Kas","purpose":"funding","operatorMemberID":"m2","returnAccountID":"bank","fundingMemberIDs":["m4"],)"
     R"("acknowledgeHistoryAccess":true})",
     "", Ending::snapshot},
    {"ArchiveAccount", [](Store& store) { return store.archiveAccount("a1"); }, "PATCH v1/accounts/a1",
     R"({"archived":true})", "", Ending::snapshot},
    {"SetTransactionColor", [](Store& store) { return store.setTransactionColor("income", "teal"); },
     "PATCH v1/company/transaction-colors", R"({"kind":"income","colorID":"teal"})", "", Ending::snapshot},
    {"SetCategorySelected", [](Store& store) { return store.setCategorySelected("rent", true); },
     "PATCH v1/me/category-preferences", R"({"categoryID":"rent","selected":true})", "", Ending::snapshot},
    {"CreateCategory",
     [](Store& store) {
         return outcomeOf(store.createCategory(
             {.kind = "expense", .names = {{"en-US", "Rent"}}, .symbol = "house", .parentID = {}, .presetID = "rent"}));
     },
     "POST v1/categories", R"({"kind":"expense","names":{"en-US":"Rent"},"symbol":"house","presetID":"rent"})",
     R"({"createdCategoryID":"c9","snapshot":)" + newerBooks.json() + "}", Ending::snapshot},
    {"UpdateCategory",
     [](Store& store) {
         CategoryUpdate update;
         update.archived = true;
         update.parentID = "not meant";
         return store.updateCategory("c1", update);
     },
     "PATCH v1/categories/c1", R"({"archived":true,"updateParent":false})", "", Ending::snapshot},
    {"MoveCategory",
     [](Store& store) {
         CategoryUpdate update;
         update.names = {{"en-US", "Rent"}, {"vi-VN", "Thuê"}};
         update.symbol = "house";
         update.parentID = "p";
         update.updateParent = true;
         return store.updateCategory("c1", update);
     },
     "PATCH v1/categories/c1",
     R"({"names":{"en-US":"Rent","vi-VN":"Thuê"},"symbol":"house","parentID":"p","updateParent":true})", "",
     Ending::snapshot},
    {"ReorderCategories",
     [](Store& store) {
         return store.reorderCategories(
             {.kind = "income", .parentID = "p", .orderedIDs = {"b", "a"}, .expectedIDs = {"a", "b"}});
     },
     "POST v1/categories/reorder", R"({"kind":"income","parentID":"p","orderedIDs":["b","a"],"expectedIDs":["a","b"]})",
     "", Ending::snapshot},
    {"ReverseTransaction", [](Store& store) { return store.reverseTransaction("t1", "typo"); },
     "POST v1/transactions/t1/reverse", R"({"reason":"typo","idempotencyKey":"id-1","date":"2026-11-20"})", "",
     Ending::snapshot},
    {"Attach", [](Store& store) { return store.attach("t1", {"r1", "r2"}); }, "POST v1/transactions/t1/attachments",
     R"({"attachmentIDs":["r1","r2"]})", "", Ending::snapshot},
    {"UpdateProfile", [](Store& store) { return store.updateProfile("Mira", true); }, "PATCH v1/me/profile",
     R"({"name":"Mira"})", "", Ending::snapshot},
    {"UpdateMember",
     [](Store& store) {
         MemberUpdate update;
         update.active = false;
         update.accountGrants = {{{.accountID = "bank", .actions = {"view"}}}};
         return store.updateMember("m2", update, true);
     },
     "PATCH v1/members/m2", R"({"active":false,"accountGrants":[{"accountID":"bank","actions":["view"]}]})", "",
     Ending::snapshot},
    {"UpdateMembersRole",
     [](Store& store) {
         MemberUpdate update;
         update.role = "finance";
         update.accountIDs = {{"bank"}};
         update.permissions = {{"exportData"}};
         return store.updateMember("m2", update, true);
     },
     "PATCH v1/members/m2", R"({"role":"finance","accountIDs":["bank"],"permissions":["exportData"]})", "",
     Ending::snapshot},
    {"UpdateSettings",
     [](Store& store) { return store.updateSettings({.name = "Kopi", .countries = {{"ID"}}, .locale = "id-ID"}); },
     "PATCH v1/settings", R"({"name":"Kopi","countries":["ID"],"locale":"id-ID"})", "", Ending::snapshot},
    {"SwitchCompany", [](Store& store) { return store.switchCompany("c2"); }, "POST v1/me/companies/switch",
     R"({"companyID":"c2"})", "", Ending::snapshot},
    {"AcceptCompanyInvitation", [](Store& store) { return store.acceptCompanyInvitation("ABC"); },
     "POST v1/invites/accept", R"({"code":"ABC","locale":"en-US"})", "", Ending::snapshot},
    {"AcceptInvitation", [](Store& store) { return store.acceptInvitation("ABC"); }, "POST v1/invites/accept",
     R"({"code":"ABC","locale":"en-US"})", "", Ending::snapshot},
    {"PostTransaction", [](Store& store) { return outcomeOf(store.postTransaction(income("k"), true)); },
     "POST v1/transactions",
     R"({"kind":"income","date":"2026-11-20","note":"","targetAccountID":"bank","currency":"USD","amountMinor":100,)"
     R"("attachmentIDs":[],"idempotencyKey":"k"})",
     R"({"id":"t2"})", Ending::reload},
    {"ImportTransactions", [](Store& store) { return store.importTransactions({income("k")}, {}); },
     "POST v1/transactions",
     R"({"kind":"income","date":"2026-11-20","note":"","targetAccountID":"bank","currency":"USD","amountMinor":100,)"
     R"("attachmentIDs":[],"idempotencyKey":"k"})",
     R"({"id":"t2"})", Ending::reload},
    {"SubmitCapital", [](Store& store) { return store.submitCapital(capitalCommand(), true); },
     "POST v1/capital/commands",
     R"({"action":"setOwnership","expectedRevision":3,"date":"2026-11-20","idempotencyKey":"k1"})", "not a snapshot",
     Ending::reload},
    {"SubmitDividend", [](Store& store) { return store.submitDividend(dividendCommand(), true); },
     "POST v1/dividends/commands", R"({"action":"pay","expectedRevision":4,"date":"2026-11-20","idempotencyKey":"k2"})",
     "", Ending::reload},
    {"SubmitFinancialSettings", [](Store& store) { return store.submitFinancialSettings(settingsCommand(), true); },
     "POST v1/financial-settings/commands",
     R"({"action":"configure","expectedRevision":5,"idempotencyKey":"k3","dividendsEnabled":true})", "",
     Ending::reload},
    {"Refresh", [](Store& store) { return store.refresh(true); }, "GET v1/snapshot", "", "", Ending::reload},
    {"RefreshFromUser", [](Store& store) { return store.refreshFromUser(); }, "GET v1/snapshot", "", "", Ending::reload,
     true},
    {"ExportCSV", [](Store& store) { return outcomeOf(store.exportCSVAsync(exportOf(newerBooks.build()), true)); },
     "GET v1/snapshot", "", "", Ending::reload},
    {"ValidateReportExport",
     [](Store& store) { return store.validateReportExport(reportOf(newerBooks.build()), true); }, "GET v1/snapshot", "",
     "", Ending::reload},
    {"ChangePassword", [](Store& store) { return store.changePassword("the old one", "a new one"); },
     "POST v1/me/password", R"({"currentPassword":"the old one","newPassword":"a new one"})", R"({"ok":true})",
     Ending::record},
    {"DownloadAttachment", [](Store& store) { return outcomeOf(store.downloadAttachment("r1")); },
     "GET v1/attachments/r1", "", "%PDF", Ending::record},
    {"ListCompanies", [](Store& store) { return outcomeOf(store.listCompanies()); }, "GET v1/me/companies", "",
     R"({"companies":[{"id":"c1","name":"Kopi"}],"ownedCompanyCount":1})", Ending::record},
    {"CreateAnotherCompany", [](Store& store) { return outcomeOf(store.createAnotherCompany("Teh", "q1")); },
     "POST v1/me/companies", R"({"companyName":"Teh","requestID":"q1"})",
     R"({"status":"pending","applicationID":"a1","companyName":"Teh","email":"m1@example.com"})", Ending::record},
    {"PreviewInvitation", [](Store& store) { return outcomeOf(store.previewInvitation("ABC")); },
     "POST v1/me/invitation", R"({"code":"ABC"})", R"({"companyName":"Teh","email":"m1@example.com"})", Ending::record},
    {"Invite",
     [](Store& store) {
         return outcomeOf(store.invite({.name = "Rini",
                                        .email = "r@x.id",
                                        .role = "finance",
                                        .accountIDs = {},
                                        .permissions = {"exportData"},
                                        .accountGrants = {}},
                                       true));
     },
     "POST v1/invites",
     R"({"name":"Rini","email":"r@x.id","role":"finance","accountIDs":[],"permissions":["exportData"],)"
     R"("accountGrants":[]})",
     R"({"code":"XYZ"})", Ending::record},
    {"LoadInvitations", [](Store& store) { return outcomeOf(store.loadInvitations(true)); }, "GET v1/invites", "",
     invitations, Ending::record},
    {"LoadAudit",
     [](Store& store) { return outcomeOf(store.loadAudit({"m2", "POST /v1/transactions", "", "", 41}, true)); },
     "GET v1/audit?person=m2&kind=POST%20%2Fv1%2Ftransactions&below=41", "", R"({"records":[]})", Ending::record},
    {"RevokeInvitation", [](Store& store) { return outcomeOf(store.revokeInvitation("i1", true)); },
     "POST v1/invites/i1/revoke", "", invitations, Ending::record},
    {"CreateTemplate", [](Store& store) { return outcomeOf(store.createTemplate(rent(), true)); }, "POST v1/templates",
     R"({"name":"Rent","shared":true,"entry":{"kind":"expense","note":"","sourceAccountID":"bank","currency":"USD",)"
     R"("amountMinor":900},"recurrence":{"unit":"month","every":1,"firstDay":"2026-11-30"},"idempotencyKey":"k4"})",
     templates, Ending::record},
    {"UpdateTemplate",
     [](Store& store) {
         const TemplateUpdate update{
             .name = "Rent", .shared = false, .entry = rent().entry, .recurrence = {}, .expectedRevision = 2};
         return outcomeOf(store.updateTemplate("t1", update, true));
     },
     "PATCH v1/templates/t1",
     R"({"name":"Rent","shared":false,"entry":{"kind":"expense","note":"","sourceAccountID":"bank","currency":"USD",)"
     R"("amountMinor":900},"expectedRevision":2})",
     templates, Ending::record},
    {"RemoveTemplate", [](Store& store) { return outcomeOf(store.removeTemplate("t1", true)); },
     "POST v1/templates/t1/remove", "", templates, Ending::record},
    {"SetTemplateDay",
     [](Store& store) { return outcomeOf(store.setTemplateDay("t1", {.day = "2026-11-30", .skipped = true}, true)); },
     "POST v1/templates/t1/days", R"({"day":"2026-11-30","skipped":true})", templates, Ending::record},
    {"UploadAttachment",
     [](Store& store) { return outcomeOf(store.uploadAttachment("a.pdf", "application/pdf", "%PDF")); },
     "POST v1/attachments", R"({"name":"a.pdf","mime":"application/pdf","dataBase64":"JVBERg=="})",
     R"({"id":"r1","name":"a.pdf","mime":"application/pdf","byteCount":4,"createdAt":"2026-11-20T00:00:00.000Z"})",
     Ending::record},
};

class Catalogue : public testing::TestWithParam<Operation> {
protected:
    /// What the service answers when it does what it is asked to.
    [[nodiscard]] std::string reply() const
    {
        const auto& given = GetParam().reply;
        return given.empty() ? newerBooks.json() : given;
    }

    StoreUnderTest test;
};

TEST_P(Catalogue, SendsOneRequestAndShowsWhatCameOfIt)
{
    test.signIn(books);
    test.server.replace(GetParam().route, ServerReply::json(reply()));
    test.server.replace("GET v1/snapshot", ServerReply::json(newerBooks.json()));
    ASSERT_TRUE(resultOf(GetParam().run(test.store)));
    const auto sent = test.server.requests(GetParam().route);
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent.front().body, GetParam().body);
    EXPECT_EQ(sent.front().header("authorization"), "Bearer token-1");
    EXPECT_EQ(*test.store.snapshot(), (GetParam().ending == Ending::record ? books : newerBooks).build());
    EXPECT_EQ(test.server.requests("GET v1/snapshot").size(), GetParam().ending == Ending::reload ? 1U : 0U);
    EXPECT_FALSE(test.store.errorMessage());
}

TEST_P(Catalogue, SendsNothingWithoutASessionOrWhileBusy)
{
    EXPECT_EQ(resultOf(GetParam().run(test.store)), failed(clientError(ClientCode::noSession)));
    EXPECT_TRUE(test.server.requests().empty());
    test.signIn(books);
    test.server.replace("GET v1/snapshot", ServerReply::parked());
    auto refreshing = test.store.refresh(true);
    waitUntil([&] { return test.server.parkedCount() == 1; });
    const auto sent = test.server.requests().size();
    const auto outcome = resultOf(GetParam().run(test.store));
    EXPECT_EQ(outcome, GetParam().givesWay ? Result<void>{} : failed(clientError(ClientCode::busy)));
    EXPECT_EQ(test.store.errorMessage(),
              GetParam().givesWay
                  ? std::nullopt
                  : std::optional<std::string>{"The previous action is still being processed. Please wait."});
    EXPECT_EQ(test.server.requests().size(), sent);
}

TEST_P(Catalogue, PublishesARefusalAndKeepsTheBooks)
{
    test.signIn(books);
    const auto held = test.store.snapshot();
    test.server.replace(GetParam().route, ServerReply::error(403, "forbidden"));
    EXPECT_FALSE(resultOf(GetParam().run(test.store)));
    EXPECT_EQ(test.store.errorMessage(), "You do not have permission to perform this action.");
    EXPECT_EQ(test.store.snapshot(), held);
    EXPECT_FALSE(test.store.isBusy());
}

TEST_P(Catalogue, EndsTheSessionThatTheServiceNoLongerKnows)
{
    test.signIn(books);
    test.server.replace(GetParam().route, ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(GetParam().run(test.store)));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_TRUE(test.credentials.sessions.empty());
    EXPECT_TRUE(test.store.errorMessage());
}

TEST_P(Catalogue, IsSilentWhenItIsGivenUp)
{
    test.signIn(books);
    test.server.replace(GetParam().route, ServerReply::parked());
    auto running = GetParam().run(test.store);
    waitUntil([&] { return test.server.parkedCount() == 1; });
    test.store.cancel();
    EXPECT_EQ(resultOf(std::move(running)), failed(Cancelled{}));
    EXPECT_FALSE(test.store.errorMessage());
    EXPECT_FALSE(test.store.isBusy());
}

TEST_P(Catalogue, SaysWhenTheOutcomeIsUnknown)
{
    test.signIn(books);
    test.server.replace(GetParam().route, ServerReply::cutShort(reply()));
    const auto outcome = resultOf(GetParam().run(test.store));
    ASSERT_FALSE(outcome);
    EXPECT_TRUE(isOutcomeUnknown(outcome.error()));
    // What only reads the transport may repeat by itself, where the connection ends before a byte of the reply was
    // seen.
    const bool isRead = GetParam().route.starts_with("GET ");
    EXPECT_LE(test.server.requests(GetParam().route).size(), isRead ? 2U : 1U) << "a command is never sent twice";
}

INSTANTIATE_TEST_SUITE_P(Operations, Catalogue, testing::ValuesIn(operations),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStoreCatalogue, GivesWhatTheServiceAnswered)
{
    StoreUnderTest test;
    test.signIn(books);
    for (const auto* name : {"CreateCategory", "Invite", "LoadInvitations", "CreateAnotherCompany"}) {
        const auto operation = std::ranges::find_if(
            operations, [&](const Operation& each) { return std::string_view{each.name} == name; });
        test.server.replace(operation->route, ServerReply::json(operation->reply));
    }
    EXPECT_EQ(resultOf(test.store.createCategory({})), "c9");
    EXPECT_EQ(resultOf(test.store.invite({}, true)), InviteResponse{"XYZ"});
    const auto pending = resultOf(test.store.loadInvitations(true));
    ASSERT_TRUE(pending);
    EXPECT_EQ(pending->front().email, "r@x.id");
    EXPECT_TRUE(resultOf(test.store.createAnotherCompany("Teh", "q1")));
    EXPECT_EQ(test.store.pendingCompanyRegistration()->applicationID, "a1");
}

/// Signs in at a service that tags its snapshots, which those of our own kind do.
void signInTagged(StoreUnderTest& test)
{
    test.server.replace("POST v1/auth/login", {.body = books.signInJson(), .headers = {"ETag: \"1\""}});
    ASSERT_TRUE(resultOf(test.store.login("m1@example.com", "secret")));
}

TEST(LedgerStoreTemplates, AreOfferedByServicesThatTagTheirSnapshots)
{
    StoreUnderTest test;
    EXPECT_FALSE(test.store.keepsMoreThanBooks());
    test.signIn(books);
    EXPECT_FALSE(test.store.keepsMoreThanBooks());
    EXPECT_TRUE(resultOf(test.store.logout()));
    signInTagged(test);
    EXPECT_TRUE(test.store.keepsMoreThanBooks());
    EXPECT_TRUE(resultOf(test.store.logout()));
    EXPECT_FALSE(test.store.keepsMoreThanBooks());
}

TEST(LedgerStoreTemplates, AreStillOfferedOnceACategoryWasMade)
{
    StoreUnderTest test;
    signInTagged(test);
    test.server.replace("POST v1/categories", {.body = R"({"createdCategoryID":"c9","snapshot":)" + books.json() + "}",
                                               .headers = {"ETag: \"2\""}});
    ASSERT_EQ(resultOf(test.store.createCategory({})), "c9");
    EXPECT_TRUE(test.store.keepsMoreThanBooks());
    test.server.replace("GET v1/snapshot", ServerReply::json(books.json()));
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(test.server.requests("GET v1/snapshot").back().header("if-none-match"), "\"2\"");
}

TEST(LedgerStoreTemplates, AreLoadedBesideWhatAPersonDoes)
{
    StoreUnderTest test;
    signInTagged(test);
    test.server.replace("GET v1/templates", ServerReply::parked());
    auto loading = test.store.loadTemplatesQuietly();
    waitUntil([&] { return test.server.parkedCount() == 1; });
    EXPECT_FALSE(test.store.isBusy());
    test.server.replace("GET v1/me/companies", ServerReply::json(R"({"companies":[],"ownedCompanyCount":0})"));
    EXPECT_TRUE(resultOf(test.store.listCompanies())) << "not refused as busy";
    EXPECT_EQ(resultOf(std::move(loading)), failed(Cancelled{})) << "it gives way";

    test.server.replace("GET v1/templates", ServerReply::json(templates));
    const auto loaded = resultOf(test.store.loadTemplatesQuietly());
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->templates.front().name, "Rent");
    test.server.replace("GET v1/templates", ServerReply::error(500, "internal_error"));
    EXPECT_FALSE(resultOf(test.store.loadTemplatesQuietly()));
    EXPECT_FALSE(test.store.errorMessage()) << "nobody has asked";
    test.server.replace("GET v1/templates", ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(test.store.loadTemplatesQuietly()));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_TRUE(test.store.errorMessage());
}

TEST(LedgerStoreCompanies, GoOnWithTheTokenOfTheCompanyThatWasEntered)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer("POST v1/me/companies/switch", ServerReply::json(newerBooks.signInJson("token-2")));
    test.server.answer("POST v1/me/companies/switch",
                       ServerReply::json(SnapshotBuilder{books}.approvalStatus("rejected").signInJson("token-3")));
    EXPECT_TRUE(resultOf(test.store.switchCompany("c2")));
    EXPECT_EQ(test.credentials.sessions.at(test.server.url()).token, "token-2");
    waitUntil([&] { return test.server.requests("POST v1/auth/logout").size() == 1; });
    EXPECT_EQ(test.server.requests("POST v1/auth/logout").front().header("authorization"), "Bearer token-1")
        << "handed back, now that its place is taken";
    EXPECT_FALSE(test.store.awaitsChange()) << "nothing to ask about before the window closes";
    EXPECT_FALSE(resultOf(test.store.switchCompany("c3")));
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_TRUE(resultOf(test.store.refresh(true)));
    EXPECT_EQ(test.server.requests("GET v1/snapshot").back().header("authorization"), "Bearer token-2");
}

TEST(LedgerStoreCompanies, LeaveNobodySignedInToTheWrongOne)
{
    StoreUnderTest test;
    test.server.replace("POST v1/auth/login", ServerReply::json(books.signInJson()));
    test.server.answer("POST v1/invites/accept", ServerReply::error(400, "invalid_invitation"));
    test.server.answer("POST v1/invites/accept", ServerReply::json(newerBooks.signInJson("token-2")));
    EXPECT_EQ(resultOf(test.store.loginAndAcceptInvitation("m1@example.com", "secret", "ABC")),
              failed(APIError{400, "invalid_invitation", "not for people"}));
    EXPECT_FALSE(test.store.snapshot());
    EXPECT_TRUE(test.credentials.sessions.empty());
    waitUntil([&] { return test.server.requests("POST v1/auth/logout").size() == 1; });
    EXPECT_EQ(test.server.requests("POST v1/auth/logout").front().header("authorization"), "Bearer token-1");

    EXPECT_TRUE(resultOf(test.store.loginAndAcceptInvitation("m1@example.com", "secret", "ABC")));
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_EQ(test.credentials.sessions.at(test.server.url()).token, "token-2");
    EXPECT_EQ(test.server.requests("POST v1/invites/accept").front().header("authorization"), "Bearer token-1");
}

TEST(LedgerStoreAccess, LeadsFromTheMailedCodeToTheBooks)
{
    StoreUnderTest test;
    test.server.answer("POST v1/auth/access/start", ServerReply::json(R"({"challengeID":"ch"})"));
    test.server.answer("POST v1/auth/access/verify",
                       ServerReply::json(R"({"ticket":"ti","existingAccount":false,"email":"r@x.id"})"));
    test.server.answer("POST v1/auth/access/complete", ServerReply::json(books.signInJson()));
    EXPECT_EQ(resultOf(test.store.startAccess("r@x.id", "ABC", "join")), AccessChallenge{"ch"});
    EXPECT_EQ(resultOf(test.store.verifyAccess("ch", "123456"))->ticket, "ti");
    EXPECT_TRUE(resultOf(test.store.completeAccess("ch", "ti", "Rini", "secret")));
    EXPECT_TRUE(test.store.snapshot());
}

TEST(LedgerStoreAccess, HoldsTheApplicationOfANewCompany)
{
    StoreUnderTest test;
    test.server.answer(
        "POST v1/auth/register",
        ServerReply::json(R"({"status":"pending","applicationID":"a1","companyName":"Kopi","email":"r@x.id"})"));
    EXPECT_TRUE(resultOf(test.store.registerCompany({.name = "Rini",
                                                     .email = "r@x.id",
                                                     .password = "secret",
                                                     .companyName = "Kopi",
                                                     .countries = {"ID"},
                                                     .invitationCode = {}})));
    EXPECT_EQ(test.store.pendingCompanyRegistration()->companyName, "Kopi");
    EXPECT_FALSE(test.store.snapshot());
}

TEST(LedgerStoreImport, StopsAtTheFirstFailureAndShowsWhatIsRecorded)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"t2"})"));
    test.server.answer("POST v1/transactions", ServerReply::error(409, "balance_limit"));
    test.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"t4"})"));
    test.server.replace("GET v1/snapshot", ServerReply::json(newerBooks.json()));
    std::vector<std::size_t> told;
    const auto note = [&](std::size_t done) { told.push_back(done); };
    EXPECT_EQ(resultOf(test.store.importTransactions({income("a"), income("b"), income("c")}, note)),
              failed(APIError{409, "balance_limit", "not for people"}));
    EXPECT_EQ(told, std::vector<std::size_t>{1});
    EXPECT_EQ(*test.store.snapshot(), newerBooks.build());
    EXPECT_EQ(test.server.requests("POST v1/transactions").size(), 2U);

    EXPECT_TRUE(resultOf(test.store.importTransactions({income("b"), income("c")}, note)));
    EXPECT_EQ(told, (std::vector<std::size_t>{1, 1, 2}));
    EXPECT_EQ(test.server.requests("GET v1/snapshot").size(), 2U) << "one reload each";
}

TEST(LedgerStoreImport, SaysHowFarItCameWhereTheSessionEnds)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer("POST v1/transactions", ServerReply::json(R"({"id":"t2"})"));
    test.server.answer("POST v1/transactions", ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(test.store.importTransactions({income("a"), income("b")}, {})));
    EXPECT_FALSE(test.store.snapshot());
    const auto& said = test.store.errorMessage();
    ASSERT_TRUE(said.has_value());
    EXPECT_TRUE(said->starts_with(test.store.friendly(APIError{401, "unauthorized", {}})));
    EXPECT_TRUE(said->ends_with(importStoppedText(1, test.store.locale()))) << *said;

    test.signIn(books);
    test.server.replace("POST v1/transactions", ServerReply::error(401, "unauthorized"));
    EXPECT_FALSE(resultOf(test.store.importTransactions({income("b")}, {})));
    EXPECT_EQ(test.store.errorMessage(), test.store.friendly(APIError{401, "unauthorized", {}})) << "nothing came in";
}

TEST(LedgerStoreAttachments, AreDownloadedOnceIntoAPrivateFile)
{
    StoreUnderTest test;
    test.signIn(books);
    test.server.answer(
        "POST v1/attachments",
        ServerReply::json(
            R"({"id":"r1","name":"../../Struk: \u0001Mei.JPEG","mime":"image/jpeg","byteCount":4,"createdAt":"x"})"));
    EXPECT_TRUE(resultOf(test.store.uploadAttachment("a", "image/jpeg", "data")));
    test.server.answer("GET v1/attachments/r1", ServerReply::json("\xFF\xD8 bytes"));
    const auto file = resultOf(test.store.downloadAttachment("r1"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->filename(), "Struk Mei.jpeg");
    EXPECT_EQ(std::filesystem::file_size(*file), 8U);
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(*file).permissions() & (perms::group_all | perms::others_all), perms::none);
    EXPECT_EQ(test.store.attachmentCacheBytes(), 8);
    EXPECT_EQ(resultOf(test.store.downloadAttachment("r1")), *file);
    const auto isDownload = [](const ServerRequest& each) { return each.path.starts_with("/v1/attachments/"); };
    EXPECT_EQ(std::ranges::count_if(test.server.requests(), isDownload), 1);
    test.store.clearAttachmentCache();
    EXPECT_EQ(test.store.attachmentCacheBytes(), 0);
    EXPECT_TRUE(resultOf(test.store.downloadAttachment("r1")));
    EXPECT_TRUE(resultOf(test.store.logout()));
    EXPECT_FALSE(std::filesystem::exists(*file)) << "goes with the session";
    EXPECT_EQ(test.store.attachmentCacheBytes(), 0);
}

TEST(LedgerStoreExports, AreRefusedWhereTheFreshBooksDiffer)
{
    StoreUnderTest test;
    test.signIn(books);
    const auto request = exportOf(*test.store.snapshot());
    const auto file = resultOf(test.store.exportCSVAsync(request, true));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->name, "quillet-ledger-2026-11-01_2026-11-30.csv");
    EXPECT_EQ(file->content, request.content);

    const auto report = reportOf(*test.store.snapshot());
    EXPECT_TRUE(resultOf(test.store.validateReportExport(report, true)));
    const auto more = SnapshotBuilder{books}.income("t2", "2026-11-02", "bank", "USD", 1);
    test.server.replace("GET v1/snapshot", ServerReply::json(more.json()));
    EXPECT_EQ(resultOf(test.store.exportCSVAsync(request, true)), failed(APIError{0, "LEDGER_EXPORT_CHANGED", ""}));
    EXPECT_EQ(resultOf(test.store.validateReportExport(report, true)),
              failed(APIError{0, "REPORT_EXPORT_CHANGED", ""}));
    EXPECT_EQ(*test.store.snapshot(), more.build());
}

TEST(LedgerStoreExports, OfCapitalAndDividendsNeedTheRight)
{
    StoreUnderTest test;
    auto owned = snapshot().permissions({"viewCapital", "exportCapital", "viewDividends", "exportData"}).build();
    owned.capital.emplace();
    owned.dividends.emplace();
    auto reader = owned;
    reader.currentMember.permissions = {{"viewCapital", "viewDividends"}};
    test.signIn(books);
    test.server.replace("GET v1/snapshot", ServerReply::json(Json::encode(owned)));
    EXPECT_EQ(resultOf(test.store.exportCapitalCSVAsync(true))->name, "tallyfold-capital-2026-11-20.csv");
    EXPECT_EQ(resultOf(test.store.exportDividendsCSVAsync(true))->name, "tallyfold-dividends-2026-11-20.csv");
    test.server.replace("GET v1/snapshot", ServerReply::json(Json::encode(reader)));
    EXPECT_EQ(resultOf(test.store.exportCapitalCSVAsync(true)), failed(APIError{403, "forbidden", ""}));
    EXPECT_EQ(resultOf(test.store.exportDividendsCSVAsync(true)), failed(APIError{403, "forbidden", ""}));
}

TEST(LedgerStoreExports, OfCapitalAndDividendsWaitForNobodyAndEndWithTheSession)
{
    for (const auto run : {&LedgerStore::exportCapitalCSVAsync, &LedgerStore::exportDividendsCSVAsync}) {
        StoreUnderTest test;
        EXPECT_EQ(resultOf((test.store.*run)(true)), failed(clientError(ClientCode::noSession)));
        test.signIn(books);
        test.server.replace("GET v1/snapshot", ServerReply::parked());
        auto first = (test.store.*run)(true);
        waitUntil([&] { return test.server.parkedCount() == 1; });
        EXPECT_EQ(resultOf((test.store.*run)(true)), failed(clientError(ClientCode::busy)));
        test.store.dismissMessages();
        test.store.cancel();
        EXPECT_EQ(resultOf(std::move(first)), failed(Cancelled{}));
        EXPECT_FALSE(test.store.errorMessage());
        test.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
        EXPECT_FALSE(resultOf((test.store.*run)(true)));
        EXPECT_FALSE(test.store.snapshot());
    }
}

}
