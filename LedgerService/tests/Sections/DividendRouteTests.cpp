#include <algorithm>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Dividends/DividendAccounting.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleSections.h"

namespace LedgerService {

namespace {

using namespace SampleSections;

DividendCommand application(std::string batchID, std::string participantID, std::string advanceID,
                            std::int64_t amountMinor)
{
    auto command = dividend(DividendAction::apply);
    command.batchID = std::move(batchID);
    command.participantID = std::move(participantID);
    command.advanceID = std::move(advanceID);
    command.amountMinor = amountMinor;
    return command;
}

DividendCommand returning(std::string advanceID, std::int64_t amountMinor, std::string accountID = "bank",
                          std::string currency = "IDR")
{
    auto command = dividend(DividendAction::returnAdvance);
    command.advanceID = std::move(advanceID);
    command.amountMinor = amountMinor;
    command.accountID = std::move(accountID);
    command.currency = std::move(currency);
    return command;
}

DividendCommand cancellation(std::string batchID)
{
    auto command = dividend(DividendAction::cancelBatch);
    command.batchID = std::move(batchID);
    return command;
}

DividendCommand reversalOf(std::string movementID)
{
    auto command = dividend(DividendAction::reverse);
    command.movementID = std::move(movementID);
    command.note = "Wrong person";
    return command;
}

}

TEST(DividendRoutes, SettleAQuarterToTheLastUnit)
{
    SectionService service;
    const auto ann = service.added(participant("Ann", 3'333));
    const auto bo = service.added(participant("Bo", 3'333));
    const auto cy = service.added(participant("Cy", 3'334));
    const auto early = service.added(advanceTo(ann, 60, "bank", "USD"));
    const auto dollars = service.added(allocation(100, {{ann, 3'333}, {bo, 3'333}, {cy, 3'334}}, "USD"));
    const auto rupiah = service.added(allocation(200'000, {{cy, 10'000}}));
    const auto lines = service.dividends().batches.at(0).lines;
    EXPECT_EQ(lines,
              (std::vector<DividendLine>{{ann, "Ann", 3'333, 33}, {bo, "Bo", 3'333, 33}, {cy, "Cy", 3'334, 34}}));

    const auto offset = service.added(application(dollars, ann, early, 33));
    service.added(returning(early, 20, "bank", "USD"));
    service.added(payment(rupiah, cy, 120'000, "bank"));
    const auto wrong = service.added(payment(rupiah, cy, 80'000, "branch"));
    const auto undone = service.added(reversalOf(wrong));
    EXPECT_EQ(service.submit("mira", cancellation(rupiah)).code(), "dividend_dependencies");
    const auto extra = service.added(allocation(9, {{bo, 10'000}}));
    ASSERT_EQ(service.submit("mira", cancellation(extra)).status, 200);

    const auto seen = service.snapshotOf("mira");
    const auto& state = *seen.dividends;
    EXPECT_EQ(DividendAccounting::lineSummary(dollars, ann, state, {}),
              (DividendLineSummary{.entitlementMinor = 33, .appliedMinor = 33, .paidMinor = 0, .unpaidMinor = 0}));
    EXPECT_EQ(DividendAccounting::unpaid(rupiah, cy, state, {}), 80'000);
    EXPECT_EQ(DividendAccounting::advanceRemaining(early, state, {}), 7);
    EXPECT_TRUE(state.batches.back().cancelled);
    EXPECT_EQ(state.batches.back().cancelledDate, "2026-03-10");
    EXPECT_EQ(seen.account("bank")->balance("USD"), 460) << "500 - 60 + 20: an offset moves nothing";
    EXPECT_EQ(seen.account("bank")->balance("IDR"), 880'000);
    EXPECT_EQ(seen.account("branch")->balance("IDR"), 0);

    const auto entry = [&](const std::string& movementID) {
        return *std::ranges::find(seen.transactions, std::optional{movementID}, &LedgerTransaction::dividendMovementID);
    };
    EXPECT_EQ(entry(early).distributionKind, "advance");
    EXPECT_EQ(entry(early).participantName, "Ann");
    EXPECT_EQ(entry(undone).reversalOf, entry(wrong).id);
    EXPECT_EQ(entry(wrong).reversedBy, entry(undone).id);
    const auto movement = [&](const std::string& id) {
        return *std::ranges::find(state.movements, id, &DividendMovement::id);
    };
    EXPECT_EQ(movement(offset).transactionID, std::nullopt);
    EXPECT_EQ(movement(wrong).reversedBy, undone);
    const auto onTheLedger = service.as("mira", "POST", "/v1/transactions/" + entry(early).id + "/reverse",
                                        Json::encode(SampleBooks::reversal()));
    EXPECT_EQ(onTheLedger.code(), "dividend_correction_required");
    EXPECT_EQ(service.problems(), "");
}

struct DividendFault {
    std::string name;
    std::string member;
    DividendCommand command;
    std::string code;
};

/// What the records of the company are called.
struct DividendIDs {
    std::string ann;
    std::string bo; // archived
    std::string batch;
    std::string early; // an advance, partly applied
    std::string other; // an advance in another currency
};

std::vector<DividendFault> faultsOn(const DividendIDs& ids)
{
    const auto dated = [](DividendCommand command, std::string day) {
        command.date = std::move(day);
        return command;
    };
    auto nameless = participant("", 1);
    auto beyond = participant("Cy", 10'001);
    auto withoutPeriod = allocation(5, {{ids.ann, 10'000}});
    withoutPeriod.period = " ";
    auto withReceipt = cancellation(ids.batch);
    withReceipt.attachmentIDs = {"free"};
    return {
        {"unknown action", "mira", dividend("split"), "validation_error"},
        {"nameless", "mira", nameless, "validation_error"},
        {"a ratio past 100 %", "mira", beyond, "validation_error"},
        {"no period", "mira", withoutPeriod, "validation_error"},
        {"nothing to allocate", "mira", allocation(0, {{ids.ann, 10'000}}), "validation_error"},
        {"99.99 %", "mira", allocation(5, {{ids.ann, 9'999}}), "validation_error"},
        {"somebody twice", "mira", allocation(5, {{ids.ann, 5'000}, {ids.ann, 5'000}}), "validation_error"},
        {"to an archived one", "mira", allocation(5, {{ids.bo, 10'000}}), "not_found"},
        {"allocated past the limit", "mira", allocation(Money::maximumMinor - 999, {{ids.ann, 10'000}}),
         "dividend_amount_limit"},
        {"paid past the limit", "mira", advanceTo(ids.ann, Money::maximumMinor - 299), "dividend_amount_limit"},
        {"advance to an archived one", "mira", advanceTo(ids.bo, 5), "not_found"},
        {"from a hidden account", "mira", advanceTo(ids.ann, 5, "hidden"), "forbidden"},
        {"from an unknown account", "mira", advanceTo(ids.ann, 5, "nowhere"), "forbidden"},
        {"from a refund account", "mira", advanceTo(ids.ann, 5, "refunds"), "forbidden"},
        {"in a currency not held", "mira", advanceTo(ids.ann, 5, "branch", "USD"), "forbidden"},
        {"more than is unpaid", "mira", payment(ids.batch, ids.ann, 801), "dividend_overpayment"},
        {"of no allocation", "mira", payment("none", ids.ann, 1), "not_found"},
        {"more than is left of the advance", "mira", returning(ids.early, 101), "dividend_overpayment"},
        {"offset past the advance", "mira", application(ids.batch, ids.ann, ids.early, 101),
         "dividend_overapplication"},
        {"offset across currencies", "mira", application(ids.batch, ids.ann, ids.other, 1), "not_found"},
        {"settled allocation", "mira", cancellation(ids.batch), "dividend_dependencies"},
        {"applied advance", "mira", reversalOf(ids.early), "dividend_dependencies"},
        {"reversal of nothing", "mira", reversalOf("none"), "not_found"},
        {"no day", "mira", dated(payment(ids.batch, ids.ann, 1), "2026-3-10"), "validation_error"},
        {"in the future", "mira", dated(payment(ids.batch, ids.ann, 1), "2026-03-12"), "validation_error"},
        {"before the last action", "mira", dated(payment(ids.batch, ids.ann, 1), "2026-03-09"), "dividend_date_order"},
        {"receipt without money", "mira", withReceipt, "validation_error"},
        {"shown or not", "mira", dividend(DividendAction::setVisibility), "validation_error"},
        {"no shares in force", "mira", dividend(DividendAction::fillFromOwnership), "capital_ownership_missing"},
        {"managing without the right", "guest", participant("Cy", 1), "forbidden"},
        {"copying without the right", "guest", dividend(DividendAction::fillFromOwnership), "forbidden"},
        {"on an account not granted", "guest", payment(ids.batch, ids.ann, 1), "forbidden"},
        {"undoing money of such an account", "guest", reversalOf(ids.other), "forbidden"},
        {"without any right", "rudi", payment(ids.batch, ids.ann, 1), "forbidden"},
    };
}

TEST(DividendRoutes, RefuseWithTheCodeOfTheFault)
{
    SectionService service;
    const auto ann = service.added(participant("Ann", 5'000));
    auto gone = participant("Bo", 0);
    gone.archived = true;
    const auto bo = service.added(gone);
    const auto batch = service.added(allocation(1'000, {{ann, 10'000}}));
    const auto early = service.added(advanceTo(ann, 300));
    const auto other = service.added(advanceTo(ann, 30, "bank", "USD"));
    const auto offset = service.added(application(batch, ann, early, 200));
    const auto before = service.dividends();

    for (const auto& row : faultsOn({ann, bo, batch, early, other}))
        EXPECT_EQ(service.submit(row.member, row.command).code(), row.code) << row.name;
    EXPECT_EQ(service.dividends(), before) << "a refused command leaves no trace";

    auto stale = payment(batch, ann, 1);
    stale.expectedRevision = before.revision - 1;
    EXPECT_EQ(service.send("mira", stale).code(), "dividend_revision_conflict");
    service.write([](Connection& connection) { connection.execute("UPDATE companies SET dividends_enabled = 0"); });
    EXPECT_EQ(service.submit("mira", allocation(5, {{ann, 10'000}})).code(), "dividends_disabled");
    EXPECT_EQ(service.submit("mira", advanceTo(ann, 5)).code(), "dividends_disabled");
    EXPECT_EQ(service.submit("mira", reversalOf(offset)).status, 200);
    EXPECT_EQ(service.submit("mira", payment(batch, ann, 1'000)).status, 200) << "what stands is still paid";
    EXPECT_EQ(service.problems(), "");
}

TEST(DividendRoutes, CarryAPaymentOutOnce)
{
    SectionService service;
    const auto ann = service.added(participant("Ann", 10'000));
    const auto batch = service.added(allocation(500, {{ann, 10'000}}));
    auto command = payment(batch, ann, 500);
    command.expectedRevision = 2;
    command.idempotencyKey = "once";
    const auto first = service.send("mira", command);
    ASSERT_EQ(first.status, 200) << first.body;
    EXPECT_EQ(service.send("mira", command).body, first.body);
    EXPECT_EQ(service.dividends().movements.size(), 1U);
    EXPECT_EQ(service.snapshotOf("mira").account("bank")->balance("IDR"), 999'500);
    command.idempotencyKey = "again";
    EXPECT_EQ(service.send("mira", command).code(), "dividend_revision_conflict");
}

TEST(DividendRoutes, FillTheRatiosFromTheSharesInForce)
{
    SectionService service;
    const auto byMember = service.added(participant("A.", 100));
    auto named = participant("Bo", 0);
    named.archived = true;
    const auto byName = service.added(named);
    const auto other = service.added(participant("Dee", 9'900));
    auto linked = participant("A.", 100);
    linked.participantID = byMember;
    linked.memberID = "mira";
    ASSERT_EQ(service.submit("mira", linked).status, 200);

    const auto ann = service.added(owner("Ann", "mira"));
    const auto bo = service.added(owner("Bo"));
    const auto cy = service.added(owner("Cy", "guest"));
    service.added(ownership({{ann, "", 5'000}, {bo, "", 2'999}, {cy, "", 2'001}}));
    auto later = ownership({{ann, "", 10'000}});
    later.date = "2026-04-01";
    service.added(later);

    auto fill = dividend(DividendAction::fillFromOwnership);
    fill.date = "2026-03-09";
    EXPECT_EQ(service.submit("mira", fill).code(), "capital_ownership_missing") << "the shares hold from the tenth";
    fill.date = "2026-03-10";
    ASSERT_EQ(service.submit("mira", fill).status, 200);
    const auto people = service.dividends().participants;
    ASSERT_EQ(people.size(), 4U);
    EXPECT_EQ(people[0], (DividendParticipant{byMember, "A.", "mira", 5'000, false}));
    EXPECT_EQ(people[1], (DividendParticipant{byName, "Bo", {}, 2'999, false}));
    EXPECT_EQ(people[2], (DividendParticipant{other, "Dee", {}, 0, false}));
    EXPECT_EQ(people[3].name, "Cy");
    EXPECT_EQ(people[3].memberID, "guest");
    EXPECT_EQ(people[3].ratioBps, 2'001);
    EXPECT_EQ(service.submit("mira", fill).status, 200) << "twice makes no difference";
    EXPECT_EQ(service.dividends().participants, people);
    EXPECT_EQ(service.problems(), "");
}

}
