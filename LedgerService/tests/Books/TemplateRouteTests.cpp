#include <algorithm>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/Staff.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/templates";

/// An expense of "bank", the rent, due on the last day of every month from January 2026 on. Today is 10 March 2026.
TemplateCreate rent()
{
    TemplateCreate command;
    command.name = " Office rent ";
    command.entry.kind = "expense";
    command.entry.sourceAccountID = "bank";
    command.entry.categoryID = "rent";
    command.entry.currency = "IDR";
    command.entry.amountMinor = 25'000;
    command.recurrence = {.unit = "month", .every = 1, .firstDay = "2026-01-31", .lastDay = {}};
    command.idempotencyKey = "rent";
    return command;
}

TransactionInput posting(const std::string& templateID, const std::string& day)
{
    auto input = SampleBooks::expense(25'000);
    input.idempotencyKey = TemplateOccurrence{templateID, day}.key();
    return input;
}

/// The sample, where "guest" may record on "bank" as "mira" does, and "rudi" sees nothing of it.
class TemplateRoutes : public testing::Test {
protected:
    TemplateRoutes() { Staff::set(m_service, "guest", "employee", {"viewCompany"}, {Staff::every("bank")}); }
    ~TemplateRoutes() override { EXPECT_EQ(m_service.problems(), ""); }

    template <class Body>
    HttpAnswer send(const std::string& by, const std::string& method, const std::string& where, const Body& body)
    {
        return m_service.as(by, method, path + where, Json::encode(body));
    }
    std::vector<EntryTemplate> list(const std::string& by)
    {
        return Json::decode<EntryTemplateList>(m_service.as(by, "GET", path).body).value().templates;
    }
    /// The id of a new template of mira's.
    std::string make(const TemplateCreate& command)
    {
        const auto answer = send("mira", "POST", "", command);
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<EntryTemplateList>(answer.body).value().templates.back().id;
    }
    HttpAnswer post(const std::string& by, const TransactionInput& input)
    {
        return m_service.as(by, "POST", "/v1/transactions", Json::encode(input));
    }
    HttpAnswer setDay(const std::string& by, const std::string& id, const std::string& day, bool skipped)
    {
        return send(by, "POST", fmt::format("/{}/days", id), TemplateDay{.day = day, .skipped = skipped});
    }
    std::size_t entries() { return m_service.snapshotOf("mira").transactions.size(); }

    TestService m_service;
};

TEST_F(TemplateRoutes, KeepWhatAMemberRecordsAgainAndAgain)
{
    const auto id = make(rent());
    make(rent()); // its reply was lost
    ASSERT_EQ(list("mira").size(), 1u);
    const auto kept = list("mira").front();
    EXPECT_EQ(kept.name, "Office rent");
    EXPECT_EQ(kept.entry, rent().entry);
    EXPECT_EQ(kept.recurrence, rent().recurrence);

    TemplateUpdate update{
        .name = "Rent", .shared = true, .entry = kept.entry, .recurrence = std::nullopt, .expectedRevision = 1};
    update.entry.amountMinor.reset();
    EXPECT_EQ(send("mira", "PATCH", "/" + id, update).status, 200);
    EXPECT_EQ(send("mira", "PATCH", "/" + id, update).status, 200) << "the same again changes nothing";
    EXPECT_EQ(list("mira").front().revision, 2);
    EXPECT_EQ(list("mira").front().entry.amountMinor, std::nullopt);
    update.name = "Flat";
    EXPECT_EQ(send("mira", "PATCH", "/" + id, update).code(), "conflict") << "made from what was there before";

    EXPECT_EQ(m_service.as("mira", "POST", fmt::format("{}/{}/remove", path, id)).body, R"({"templates":[]})");
    EXPECT_EQ(m_service.as("mira", "POST", fmt::format("{}/{}/remove", path, id)).code(), "not_found");
}

TEST_F(TemplateRoutes, AreSeenByTheirAuthorAndWhenSharedByWhoSeesTheirAccounts)
{
    auto command = rent();
    const auto own = make(command);
    command.shared = true;
    command.idempotencyKey = "shared";
    const auto shared = make(command);
    command.entry = {.kind = "transfer",
                     .note = "",
                     .categoryID = {},
                     .sourceAccountID = "bank",
                     .targetAccountID = "float",
                     .currency = "IDR",
                     .targetCurrency = {},
                     .amountMinor = {},
                     .targetAmountMinor = {}};
    command.idempotencyKey = "float";
    make(command);
    const auto seen = [&](const std::string& by) {
        std::vector<std::string> ids;
        for (const auto& each : list(by))
            ids.push_back(each.id);
        return ids;
    };
    EXPECT_EQ(seen("mira").size(), 3u);
    EXPECT_EQ(seen("guest").size(), 2u) << "who views the company sees the float, too";
    EXPECT_EQ(seen("rudi").size(), 0u) << "sees the float and not the bank";
    EXPECT_EQ(setDay("guest", own, "2026-01-31", true).code(), "not_found");
    EXPECT_EQ(send("guest", "PATCH", "/" + shared,
                   TemplateUpdate{
                       .name = "Mine", .shared = false, .entry = rent().entry, .recurrence = {}, .expectedRevision = 1})
                  .code(),
              "forbidden");
    Staff::set(m_service, "guest", "employee", {"manageCompany"}, {{"bank", {"view"}}});
    EXPECT_EQ(setDay("guest", shared, "2026-01-31", true).code(), "forbidden") << "sees, and may not record";
    EXPECT_EQ(m_service.as("guest", "POST", fmt::format("{}/{}/remove", path, shared)).status, 200);
}

TEST_F(TemplateRoutes, RefuseWhatCouldNotBeRecorded)
{
    const auto code = [&](auto change, const std::string& by = "mira") {
        auto command = rent();
        change(command);
        command.idempotencyKey = "refused";
        return send(by, "POST", "", command).code();
    };
    const auto nothing = [](TemplateCreate&) {};
    EXPECT_EQ(code(nothing, "rudi"), "not_found");
    EXPECT_EQ(code([](auto& each) { each.entry.sourceAccountID = "closed"; }), "account_archived");
    EXPECT_EQ(code([](auto& each) { each.entry.categoryID = "fax"; }), "CATEGORY_ARCHIVED");
    for (const auto change : std::initializer_list<void (*)(TemplateCreate&)>{
             [](TemplateCreate& each) { each.name = "two\nlines"; },
             [](TemplateCreate& each) { each.entry.kind = "opening"; },
             [](TemplateCreate& each) { each.entry.kind = "capital"; },
             [](TemplateCreate& each) { each.entry.categoryID = "sales"; },
             [](TemplateCreate& each) { each.entry.currency = "JPY"; },
             [](TemplateCreate& each) { each.entry.amountMinor = 0; },
             [](TemplateCreate& each) { each.entry.amountMinor = 9'000'000'000'001; },
             [](TemplateCreate& each) { each.entry.targetAccountID = "branch"; },
             [](TemplateCreate& each) { each.entry.note = std::string(2'001, 'a'); },
             [](TemplateCreate& each) { each.recurrence->unit = "fortnight"; },
             [](TemplateCreate& each) { each.recurrence->every = 0; },
             [](TemplateCreate& each) { each.recurrence->firstDay = "2026-02-30"; },
             [](TemplateCreate& each) { each.recurrence->lastDay = "2026-01-30"; }})
        EXPECT_EQ(code(change), "validation_error");
    EXPECT_EQ(code([](auto& each) { each.entry.amountMinor = 9'000'000; }), "") << "balances are asked on the day";
    EXPECT_EQ(list("mira").size(), 1u);
}

TEST_F(TemplateRoutes, KeepNoMoreThanAMemberCanLookThrough)
{
    auto command = rent();
    for (int number = 0; number < 200; ++number) {
        command.idempotencyKey = fmt::format("rent-{}", number);
        ASSERT_EQ(send("mira", "POST", "", command).status, 200);
    }
    command.idempotencyKey = "one more";
    const auto refused = send("mira", "POST", "", command);
    EXPECT_EQ(refused.code(), "rate_limited");
    EXPECT_EQ(refused.header("retry-after"), "3600");
    const auto last = list("mira").back().id;
    EXPECT_EQ(m_service.as("mira", "POST", fmt::format("{}/{}/remove", path, last)).status, 200);
    EXPECT_EQ(send("mira", "POST", "", command).status, 200);
}

TEST_F(TemplateRoutes, GiveADueDayOneEntryWhoeverRecordsIt)
{
    auto command = rent();
    command.shared = true;
    const auto id = make(command);
    const auto before = entries();
    const auto first = post("mira", posting(id, "2026-02-28"));
    ASSERT_EQ(first.status, 200) << first.body;
    const auto recorded = Json::decode<LedgerTransaction>(first.body).value().id;

    const auto repeated = [&](const std::string& by) {
        return Json::decode<LedgerTransaction>(post(by, posting(id, "2026-02-28")).body)
            .value_or(LedgerTransaction{})
            .id;
    };
    EXPECT_EQ(repeated("mira"), recorded) << "the reply was lost";
    DraftKeep kept{
        .entry = {}, .locale = "en-US", .sent = posting(id, "2026-02-28"), .writer = "window", .takenFrom = {}};
    kept.entry.idempotencyKey = kept.sent->idempotencyKey;
    const auto draft = "/v1/me/drafts/" + kept.entry.idempotencyKey;
    ASSERT_EQ(m_service.as("guest", "PUT", draft, Json::encode(kept)).status, 200);
    EXPECT_EQ(repeated("guest"), recorded) << "a colleague records the very same at the same time";
    const auto drafts = m_service.as("guest", "GET", "/v1/me/drafts").body;
    EXPECT_TRUE(Json::decode<EntryDraftList>(drafts).value().drafts.empty()) << "it is not to be sent again";
    const auto keep = [&] { return m_service.as("guest", "PUT", draft, Json::encode(kept)).body; };
    EXPECT_EQ(Json::decode<DraftKept>(keep()).value().recordedEntryID, recorded) << "kept too late";
    EXPECT_EQ(m_service.as("guest", "GET", "/v1/me/drafts").body, drafts);
    kept.sent->amountMinor = 26'000;
    EXPECT_EQ(keep(), "{}") << "refused when it is sent, it can be mended";
    const auto receipt =
        m_service.as("guest", "POST", "/v1/attachments", SampleReceipts::upload(SampleReceipts::pdf(500)));
    auto withReceipt = posting(id, "2026-02-28");
    withReceipt.attachmentIDs = {Json::decode<Attachment>(receipt.body).value().id};
    EXPECT_EQ(post("guest", withReceipt).code(), "idempotency_conflict") << "that entry has not the receipt";
    auto other = posting(id, "2026-02-28");
    other.amountMinor = 26'000;
    EXPECT_EQ(post("guest", other).code(), "idempotency_conflict");
    EXPECT_EQ(post("mira", other).code(), "idempotency_conflict");
    EXPECT_EQ(entries(), before + 1);
    EXPECT_EQ(list("guest").front().settled, (std::vector<SettledDay>{{"2026-02-28", recorded}}));

    EXPECT_EQ(m_service.as("mira", "POST", fmt::format("{}/{}/remove", path, id)).status, 200);
    EXPECT_EQ(post("guest", other).code(), "idempotency_conflict") << "a form that was open meanwhile";
    EXPECT_EQ(entries(), before + 1);
}

TEST_F(TemplateRoutes, GiveADueDayNoSecondEntryWhereTheTemplateIsSharedNoMore)
{
    auto command = rent();
    command.shared = true;
    const auto id = make(command);
    const auto before = entries();
    ASSERT_EQ(post("mira", posting(id, "2026-02-28")).status, 200);
    ASSERT_EQ(post("guest", posting(id, "2026-02-28")).status, 200) << "the reply is lost";
    const auto kept = list("mira").front();
    const TemplateUpdate update{.name = kept.name,
                                .shared = false,
                                .entry = kept.entry,
                                .recurrence = kept.recurrence,
                                .expectedRevision = kept.revision};
    ASSERT_EQ(send("mira", "PATCH", "/" + id, update).status, 200);
    EXPECT_EQ(post("guest", posting(id, "2026-02-28")).status, 200);
    EXPECT_EQ(entries(), before + 1);
}

TEST_F(TemplateRoutes, AreSettledByThoseAloneWhoMayRecordTheEntry)
{
    auto command = rent();
    command.shared = true;
    const auto id = make(command);
    Staff::set(m_service, "guest", "employee", {"viewCompany"}, {{"bank", {"view"}}, Staff::every("branch")});
    auto other = posting(id, "2026-02-28");
    other.sourceAccountID = "branch";
    other.amountMinor = 1;
    EXPECT_EQ(post("guest", other).status, 200) << "an entry like any other";
    EXPECT_EQ(list("mira").front().settled, std::vector<SettledDay>{});
}

TEST_F(TemplateRoutes, SkipADueDayAndProposeItAgain)
{
    const auto id = make(rent());
    EXPECT_EQ(setDay("mira", id, "2026-02-28", true).status, 200);
    EXPECT_EQ(setDay("mira", id, "2026-02-28", true).status, 200);
    EXPECT_EQ(list("mira").front().settled, (std::vector<SettledDay>{{"2026-02-28", std::nullopt}}));
    EXPECT_EQ(setDay("mira", id, "2026-02-28", false).status, 200);
    EXPECT_EQ(list("mira").front().settled, std::vector<SettledDay>{});

    EXPECT_EQ(setDay("mira", id, "2026-02-28", true).status, 200);
    EXPECT_EQ(post("mira", posting(id, "2026-02-28")).status, 200) << "recorded after all";
    EXPECT_EQ(setDay("mira", id, "2026-02-28", false).code(), "conflict");
    EXPECT_EQ(setDay("mira", id, "2026-02-28", true).code(), "conflict");
    for (const auto* day : {"2026-02-27", "2025-12-31", "2027-03-31", "9000-01-31", "soon"})
        EXPECT_EQ(setDay("mira", id, day, true).code(), "validation_error") << day;
    EXPECT_EQ(setDay("mira", id, "2027-02-28", true).status, 200) << "within a year";
}

TEST_F(TemplateRoutes, LetAKeyOfAHiddenTemplateSettleNothing)
{
    const auto id = make(rent());
    const auto before = entries();
    EXPECT_EQ(post("guest", posting(id, "2026-02-28")).status, 200) << "an entry like any other";
    EXPECT_EQ(list("mira").front().settled, std::vector<SettledDay>{});
    EXPECT_EQ(post("mira", posting(id, "2026-02-28")).status, 200);
    EXPECT_EQ(entries(), before + 2);

    ASSERT_EQ(post("mira", posting(id, "2026-03-31")).status, 200);
    Staff::set(m_service, "rudi", "employee", {}, {Staff::every("branch")});
    auto guess = posting(id, "2026-03-31");
    guess.sourceAccountID = "branch";
    guess.amountMinor = 1;
    EXPECT_EQ(post("rudi", guess).status, 200) << "that the day is recorded is not told";
    EXPECT_EQ(entries(), before + 4);
}

TEST_F(TemplateRoutes, ARefusedEntryLeavesItsDayOpen)
{
    const auto id = make(rent());
    auto input = posting(id, "2026-02-28");
    input.date = "2027-01-01";
    EXPECT_EQ(post("mira", input).code(), "validation_error");
    EXPECT_EQ(list("mira").front().settled, std::vector<SettledDay>{});
    EXPECT_EQ(post("mira", posting(id, "2026-02-28")).status, 200) << "mended, with the same key";
}

}

}
