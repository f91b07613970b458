#include <algorithm>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleSections.h"

namespace LedgerService {

namespace {

using namespace SampleSections;

const LedgerTransaction& entryOf(const LedgerSnapshot& snapshot, const std::string& id)
{
    return *std::ranges::find(snapshot.transactions, id, &LedgerTransaction::id);
}

CapitalCommand reversalOf(std::string contributionID)
{
    auto command = capital(CapitalAction::reverse);
    command.contributionID = std::move(contributionID);
    command.note = "Sent back";
    return command;
}

CapitalCommand baseline(std::vector<CapitalAmountLine> lines, std::string throughDate = "2025-12-31")
{
    auto command = capital(CapitalAction::setBaseline);
    command.currency = "IDR";
    command.throughDate = std::move(throughDate);
    command.entries = std::move(lines);
    return command;
}

}

TEST(CapitalRoutes, BookAContributionAndItsReversalWithLinksBothWays)
{
    SectionService service;
    service.write([](Connection& connection) {
        AttachmentRepository::insert(connection, "sample", {"slip", {}, "slip.pdf", "application/pdf", 1, ""}, "mira");
    });
    const auto ann = service.added(owner("  Ann ", "mira"));
    auto money = contribution(ann, 250'000);
    money.note = "First instalment";
    money.attachmentIDs = {"slip"};
    const auto id = service.added(money);

    auto seen = service.snapshotOf("mira");
    const auto made = seen.capital->contributions.at(0);
    EXPECT_EQ(seen.capital->revision, 2);
    EXPECT_EQ(made.participantName, "Ann");
    EXPECT_EQ(seen.account("bank")->balance("IDR"), 1'250'000);
    const auto booked = entryOf(seen, made.transactionID);
    EXPECT_EQ(booked.kind, "capital");
    EXPECT_EQ(booked.legs, (std::vector<LedgerLeg>{{"bank", "IDR", 250'000}}));
    EXPECT_EQ(booked.capitalContributionID, id);
    EXPECT_EQ(booked.participantName, "Ann");
    EXPECT_EQ(booked.note, "First instalment");
    EXPECT_EQ(booked.attachmentIDs, std::vector<std::string>{"slip"});

    const auto onTheLedger = service.as("mira", "POST", "/v1/transactions/" + made.transactionID + "/reverse",
                                        Json::encode(SampleBooks::reversal()));
    EXPECT_EQ(onTheLedger.code(), "capital_correction_required");

    const auto undone = service.added(reversalOf(id));
    seen = service.snapshotOf("mira");
    EXPECT_EQ(seen.account("bank")->balance("IDR"), 1'000'000);
    EXPECT_EQ(seen.capital->contributions.at(0).reversedBy, undone);
    EXPECT_EQ(seen.capital->contributions.at(1).amountMinor, -250'000);
    const auto opposite = entryOf(seen, seen.capital->contributions.at(1).transactionID);
    EXPECT_EQ(opposite.kind, "reversal");
    EXPECT_EQ(opposite.reversalOf, made.transactionID);
    EXPECT_EQ(opposite.capitalContributionID, undone);
    EXPECT_EQ(entryOf(seen, made.transactionID).reversedBy, opposite.id);
    EXPECT_EQ(service.submit("mira", reversalOf(id)).code(), "already_reversed");
    EXPECT_EQ(service.submit("mira", reversalOf(undone)).code(), "not_found");
    EXPECT_EQ(service.problems(), "");
}

TEST(CapitalRoutes, KeepOwnersSharesBaselinesAndVisibility)
{
    SectionService service;
    EXPECT_EQ(service.capital().revision, 0);
    EXPECT_TRUE(service.capital().showInSidebar);
    const auto ann = service.added(owner("Ann", "mira"));
    const auto bo = service.added(owner("Bo"));
    auto renamed = owner("Anne", "mira");
    renamed.participantID = ann;
    ASSERT_EQ(service.submit("mira", renamed).status, 200);
    const auto first = service.added(baseline({{ann, "forged", 300}, {bo, "", 0}}));
    auto better = baseline({{ann, "", 400}, {bo, "", 50}}, "2025-11-30");
    better.replacesID = first;
    const auto second = service.added(better);
    const auto shares = service.added(ownership({{ann, "", 6'250}, {bo, "", 3'750}}));
    auto hidden = capital(CapitalAction::setVisibility);
    hidden.showInSidebar = false;
    ASSERT_EQ(service.submit("mira", hidden).status, 200);

    const auto state = service.capital();
    EXPECT_EQ(state.revision, 7);
    EXPECT_FALSE(state.showInSidebar);
    EXPECT_EQ(state.participants,
              (std::vector<CapitalParticipant>{{ann, "Anne", "mira", false}, {bo, "Bo", {}, false}}));
    EXPECT_EQ(state.baselines.at(1).replacesID, first);
    EXPECT_EQ(state.baselines.at(0).entries.at(0).participantName, "Anne");
    EXPECT_EQ(state.ownershipVersions.at(0).id, shares);
    EXPECT_EQ(state.currencies, std::vector<std::string>{"IDR"});
    EXPECT_EQ(CapitalSummary::create(state, "IDR", {}, {})->totalMinor, 450) << second;
    EXPECT_EQ(service.snapshotOf("mira").account("bank")->balance("IDR"), 1'000'000) << "a baseline moves nothing";
    EXPECT_EQ(service.problems(), "");
}

struct CapitalFault {
    std::string name;
    std::string member;
    CapitalCommand command;
    std::string code;
};

/// What the records of the company are called.
struct CapitalIDs {
    std::string ann;
    std::string bo; // archived
    std::string baseline;
    std::string contribution;
};

std::vector<CapitalFault> faultsOn(const CapitalIDs& ids)
{
    const auto dated = [](CapitalCommand command, std::string day) {
        command.date = std::move(day);
        return command;
    };
    const auto replacing = [&](CapitalCommand command) {
        command.replacesID = ids.baseline;
        return command;
    };
    auto stranger = owner("Cy", "nobody");
    auto withReceipt = reversalOf(ids.contribution);
    withReceipt.attachmentIDs = {"free"};
    auto linked = contribution(ids.ann, 5);
    linked.attachmentIDs = {"linked"};
    return {
        {"unknown action", "mira", capital("buyBack"), "validation_error"},
        {"nameless owner", "mira", owner(" "), "validation_error"},
        {"a name without end", "mira", owner(std::string(201, 'n')), "validation_error"},
        {"unknown member", "mira", stranger, "not_found"},
        {"member of another owner", "mira", owner("Cy", "mira"), "not_found"},
        {"unknown owner", "mira", contribution("nobody", 5), "not_found"},
        {"archived owner", "mira", contribution(ids.bo, 5), "not_found"},
        {"no money", "mira", contribution(ids.ann, 0), "validation_error"},
        {"past the limit with what stands", "mira", contribution(ids.ann, Money::maximumMinor - 9'999),
         "capital_amount_limit"},
        {"past the limit of the balance", "mira", contribution(ids.ann, Money::maximumMinor - 11'000), "balance_limit"},
        {"hidden account", "mira", contribution(ids.ann, 5, "hidden"), "not_found"},
        {"archived account", "mira", contribution(ids.ann, 5, "closed"), "not_found"},
        {"unknown account", "mira", contribution(ids.ann, 5, "nowhere"), "not_found"},
        {"currency not held", "mira", contribution(ids.ann, 5, "branch", "USD"), "not_found"},
        {"unknown currency", "mira", contribution(ids.ann, 5, "bank", "XXX"), "validation_error"},
        {"no day", "mira", dated(contribution(ids.ann, 5), "2026-02-30"), "validation_error"},
        {"in the future", "mira", dated(contribution(ids.ann, 5), "2026-03-12"), "validation_error"},
        {"before the last action", "mira", dated(contribution(ids.ann, 5), "2026-03-09"), "capital_date_order"},
        {"receipt of another entry", "mira", linked, "attachment_linked"},
        {"receipt on a reversal", "mira", withReceipt, "validation_error"},
        {"reversal of nothing", "mira", reversalOf("none"), "not_found"},
        {"covers a contribution", "mira", replacing(baseline({{ids.ann, "", 1}}, "2026-03-10")),
         "capital_baseline_overlap"},
        {"covers tomorrow", "mira", replacing(baseline({{ids.ann, "", 1}}, "2026-03-11")), "capital_baseline_boundary"},
        {"covers no day", "mira", replacing(baseline({{ids.ann, "", 1}}, "")), "capital_baseline_boundary"},
        {"supersedes nothing", "mira", baseline({{ids.ann, "", 1}}), "capital_baseline_conflict"},
        {"leaves an owner out", "mira", replacing(baseline({{ids.bo, "", 1}})), "capital_baseline_coverage"},
        {"lists an owner twice", "mira", replacing(baseline({{ids.ann, "", 1}, {ids.ann, "", 1}})),
         "capital_baseline_coverage"},
        {"negative history", "mira", replacing(baseline({{ids.ann, "", -1}})), "validation_error"},
        {"shares of 99.99 %", "mira", ownership({{ids.ann, "", 9'999}}), "validation_error"},
        {"shares of an archived owner", "mira", ownership({{ids.ann, "", 9'999}, {ids.bo, "", 1}}), "not_found"},
        {"shares of another century", "mira", dated(ownership({{ids.ann, "", 10'000}}), "9999-12-31"),
         "validation_error"},
        {"shares from too far ahead", "mira", dated(ownership({{ids.ann, "", 10'000}}), "2032-01-01"),
         "validation_error"},
        {"shown or not", "mira", capital(CapitalAction::setVisibility), "validation_error"},
        {"posting without the right", "rudi", contribution(ids.ann, 5), "forbidden"},
        {"on an account not granted", "guest", contribution(ids.ann, 5), "not_found"},
        {"correcting without the right", "guest", reversalOf(ids.contribution), "forbidden"},
        {"managing without the right", "guest", ownership({{ids.ann, "", 10'000}}), "forbidden"},
    };
}

TEST(CapitalRoutes, RefuseWithTheCodeOfTheFault)
{
    SectionService service;
    const auto ann = service.added(owner("Ann", "mira"));
    auto gone = owner("Bo");
    gone.archived = true;
    const auto bo = service.added(gone);
    const auto old = service.added(baseline({{ann, "", 9'000}}));
    const auto paid = service.added(contribution(ann, 1'000));
    const auto before = service.capital();

    for (const auto& row : faultsOn({ann, bo, old, paid}))
        EXPECT_EQ(service.submit(row.member, row.command).code(), row.code) << row.name;
    EXPECT_EQ(service.capital(), before) << "a refused command leaves no trace";

    auto planned = ownership({{ann, "", 10'000}});
    planned.date = "2031-12-31";
    EXPECT_EQ(service.submit("mira", planned).status, 200) << "an agreement for later";
    auto stale = contribution(ann, 5);
    stale.expectedRevision = before.revision - 1;
    EXPECT_EQ(service.send("mira", stale).code(), "capital_revision_conflict");
    service.write([](Connection& connection) { connection.execute("UPDATE companies SET contributions_enabled = 0"); });
    EXPECT_EQ(service.submit("mira", contribution(ann, 5)).code(), "contributions_disabled");
    EXPECT_EQ(service.submit("mira", reversalOf(paid)).status, 200) << "what stands stays correctable";
    EXPECT_EQ(service.problems(), "");
}

TEST(CapitalRoutes, CarryACommandOutOnceAndLetOneOfTwoOwnersWin)
{
    SectionService service;
    const auto ann = service.added(owner("Ann"));
    auto command = contribution(ann, 700);
    command.expectedRevision = 1;
    command.idempotencyKey = "once";
    const auto first = service.send("mira", command);
    ASSERT_EQ(first.status, 200) << first.body;
    EXPECT_EQ(service.send("mira", command).body, first.body) << "although the revision has moved on";
    command.amountMinor = 701;
    EXPECT_EQ(service.send("mira", command).code(), "idempotency_conflict");

    const auto race = [&](std::string member, std::string account) {
        auto each = contribution(ann, 10, std::move(account));
        each.expectedRevision = 2;
        each.idempotencyKey = member;
        return service.client()
            .send("POST", "/v1/capital/commands", service.tokenOf(member), Json::encode(each))
            .code();
    };
    std::array<std::string, 2> codes;
    {
        std::jthread other{[&] { codes[0] = race("guest", "branch"); }};
        codes[1] = race("mira", "bank");
    }
    std::ranges::sort(codes);
    EXPECT_EQ(codes, (std::array<std::string, 2>{"", "capital_revision_conflict"}));
    EXPECT_EQ(service.capital().contributions.size(), 2U);
    EXPECT_EQ(service.problems(), "");
}

TEST(CapitalRoutes, ShowNothingOfCapitalAndDividendsToThoseWithoutTheRight)
{
    SectionService service;
    const auto token = service.tokenOf("rudi");
    auto client = service.client();
    const auto tag = client.send("GET", "/v1/snapshot", token).header("etag");
    const auto ann = service.added(owner("Ann Secret"));
    auto money = contribution(ann, 250'000);
    money.note = "of Ann Secret";
    service.added(money);
    const auto cy = service.added(participant("Cy Secret", 10'000));
    auto paidOut = advanceTo(cy, 40);
    paidOut.note = "to Cy Secret";
    service.added(paidOut);

    const auto whole = client.send("GET", "/v1/snapshot", token);
    const auto delta = client.send("GET", "/v1/snapshot", token, "", "If-None-Match: " + tag + "\r\nA-IM: entries\r\n");
    EXPECT_EQ(delta.status, 226);
    for (const auto& answer : {whole, delta}) {
        EXPECT_FALSE(answer.body.contains("Secret")) << answer.body;
        for (const auto* key : {"\"capital\":{", "\"dividends\":{", "capitalContributionID", "dividendMovementID",
                                "distributionKind", "participantName"})
            EXPECT_FALSE(answer.body.contains(key)) << key;
    }
    const auto seen = Json::decode<LedgerSnapshot>(whole.body);
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(seen->account("bank")->balance("IDR"), 1'249'960);
    EXPECT_EQ(seen->transactions.back().kind, "dividend") << "the money of an account that one sees is explained";
    EXPECT_EQ(service.snapshotOf("guest").capital, service.capital());
    EXPECT_EQ(service.snapshotOf("guest").dividends, service.dividends());
    for (const auto* action : {"contribute", "reverse", "setParticipant", "setBaseline"})
        EXPECT_EQ(service.submit("rudi", capital(action)).code(), "forbidden") << action;
}

}
