#include <set>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerService/Commands/CompanyFounding.h"
#include "LedgerService/Storage/Rows/Sections/CapitalRepository.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/BookFaults.h"
#include "LedgerService/testing/Random/RandomSections.h"
#include "LedgerService/testing/SampleSections.h"

namespace LedgerService {

namespace {

using namespace SampleSections;

/// Sound books: an owner with a baseline, a contribution, one that was reversed and shares; an allocation of which part
/// was paid and part offset against an advance.
Books soundBooks()
{
    auto company = books();
    int number = 0;
    const auto submit = [&](auto command, int revision) {
        command.expectedRevision = revision;
        const auto done = company.submit(command, actBy("mira", ++number));
        EXPECT_TRUE(done) << done.error().message;
    };
    submit(owner("Ann", "mira"), 0); // r1
    auto history = capital(CapitalAction::setBaseline);
    history.currency = "IDR";
    history.throughDate = "2025-12-31";
    history.entries = {{{"r1", "", 70}}};
    submit(history, 1);                   // r2
    submit(contribution("r1", 5'000), 2); // r3
    submit(contribution("r1", 900), 3);   // r4
    auto undo = capital(CapitalAction::reverse);
    undo.contributionID = "r4";
    submit(undo, 4);                                // r5
    submit(ownership({{"r1", "", 10'000}}), 5);     // r6
    submit(participant("Ann", 10'000), 0);          // r7
    submit(allocation(1'000, {{"r7", 10'000}}), 1); // r8
    submit(advanceTo("r7", 300), 2);                // r9
    auto offset = dividend(DividendAction::apply);
    offset.batchID = "r8";
    offset.advanceID = "r9";
    offset.participantID = "r7";
    offset.amountMinor = 200;
    submit(offset, 3);                   // r10
    submit(payment("r8", "r7", 500), 4); // r11
    return company;
}

template <class Record>
Record& made(Books& company, std::string_view id)
{
    const auto in = [&](auto& changes) -> Record* {
        for (auto& change : changes) {
            if constexpr (requires { std::get_if<Record>(&change.made); }) {
                auto* const record = std::get_if<Record>(&change.made);
                if (record && record->id == id)
                    return record;
            }
        }
        return nullptr;
    };
    if constexpr (std::is_same_v<Record, CapitalContribution> || std::is_same_v<Record, CapitalBaseline>)
        return *in(company.capitalChanges);
    else
        return *in(company.dividendChanges);
}

class BrokenSections : public testing::TestWithParam<BookFault> {};

TEST_P(BrokenSections, SayWhatIsWrong)
{
    GetParam().expectIsFound(soundBooks());
}

INSTANTIATE_TEST_SUITE_P(
    Faults, BrokenSections,
    testing::Values(BookFault{"LostChange", "stands in the place of",
                              [](Books& c) { c.capitalChanges.erase(c.capitalChanges.begin()); }},
                    BookFault{"ActionOfAnotherRecord", "made something else",
                              [](Books& c) { c.dividendChanges[1].action = "pay"; }},
                    BookFault{"MadeByNobody", "made by nobody", [](Books& c) { c.capitalChanges[2].memberID = "x"; }},
                    BookFault{"ContributionWithoutItsEntry", "there is no entry",
                              [](Books& c) { made<CapitalContribution>(c, "r3").transactionID = "none"; }},
                    BookFault{"ContributionOfAnotherAmount", "books something else",
                              [](Books& c) { ++made<CapitalContribution>(c, "r3").amountMinor; }},
                    BookFault{"ContributionOfAnotherOwner", "its entry names another",
                              [](Books& c) { made<CapitalContribution>(c, "r3").participantName = "Bo"; }},
                    BookFault{"LinkBackLost", "its entry names another",
                              [](Books& c) { entryOf(c, "e3").capitalContributionID = "r4"; }},
                    BookFault{"ReversalOfAnotherEntry", "books something else",
                              [](Books& c) { made<CapitalContribution>(c, "r5").reversalOf = "r3"; }},
                    BookFault{"EntryOfNoContribution", "no contribution and no dividend",
                              [](Books& c) { entryOf(c, "sale").kind = EntryKind::capital; }},
                    BookFault{"UndonePastItsSection", "past its section",
                              [](Books& c) {
                                  auto opposite = entryOf(c, "e3");
                                  opposite.id = "past";
                                  opposite.kind = EntryKind::reversal;
                                  opposite.reversalOf = "e3";
                                  opposite.capitalContributionID.reset();
                                  opposite.participantName.reset();
                                  c.entries.push_back(opposite);
                              }},
                    BookFault{"ContributionInCoveredTime", "breaks its own rules in IDR",
                              [](Books& c) { made<CapitalBaseline>(c, "r2").throughDate = "2026-03-10"; }},
                    BookFault{"PaidTwice", "breaks its own rules in IDR",
                              [](Books& c) { made<DividendMovement>(c, "r11").amountMinor = 801; }},
                    BookFault{"PaymentOfAnotherAmount", "entries make",
                              [](Books& c) { --made<DividendMovement>(c, "r11").amountMinor; }},
                    BookFault{"LinesThatDoNotAddUp", "breaks its own rules",
                              [](Books& c) { --made<DividendBatch>(c, "r8").lines[0].amountMinor; }},
                    BookFault{"OffsetWithAnEntry", "and only that",
                              [](Books& c) { made<DividendMovement>(c, "r10").transactionID = "e11"; }},
                    BookFault{"PaymentWithoutAnEntry", "and only that",
                              [](Books& c) { made<DividendMovement>(c, "r11").transactionID.reset(); }},
                    BookFault{"DividendEntryOfAnotherKind", "its entry names another",
                              [](Books& c) { entryOf(c, "e11").distributionKind = "advance"; }},
                    BookFault{"OwnerOfAnUnknownMember", "is unknown",
                              [](Books& c) { std::get<CapitalParticipant>(c.capitalChanges[0].made).memberID = "x"; }}),
    [](const auto& each) { return each.param.name; });

template <class Command>
void step(Books& company, const Command& command, const BookAct& act, WalkTally& met)
{
    walkOn(
        company, [&](Books& books) { return books.submit(command, act); }, [&](const Books&) { return command.action; },
        met);
}

Books walked(std::uint32_t seed, int steps, WalkTally& met)
{
    RandomSections commands{seed};
    auto company = books();
    for (int number = 1; number <= steps && !testing::Test::HasFatalFailure(); ++number) {
        const auto act = actBy(commands.actor(), number);
        if (commands.changesCapital())
            step(company, commands.capitalFor(CapitalHistory::stateAfter(company.capitalChanges)), act, met);
        else
            step(company, commands.dividendFor(DividendHistory::stateAfter(company.dividendChanges)), act, met);
    }
    return company;
}

TEST(Sections, StayWholeOnRandomWalks)
{
    WalkTally met;
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        SCOPED_TRACE(fmt::format("seed {}", seed));
        walked(seed, 200, met);
        ASSERT_FALSE(HasFatalFailure());
    }
    for (const auto* action :
         {"setParticipant", "contribute", "reverse", "setBaseline", "setOwnership", "setVisibility",
          "fillFromOwnership", "allocate", "apply", "cancelBatch", "advance", "pay", "return"})
        EXPECT_GE(met.done[action], 10) << action;
    const std::set<std::string> everyRefusal{"already_reversed",
                                             "capital_amount_limit",
                                             "capital_baseline_boundary",
                                             "capital_baseline_coverage",
                                             "capital_baseline_overlap",
                                             "capital_date_order",
                                             "capital_ownership_missing",
                                             "capital_revision_conflict",
                                             "dividend_amount_limit",
                                             "dividend_date_order",
                                             "dividend_dependencies",
                                             "dividend_overapplication",
                                             "dividend_overpayment",
                                             "dividend_revision_conflict",
                                             "forbidden",
                                             "not_found",
                                             "validation_error"};
    EXPECT_EQ(met.refused, everyRefusal);
}

TEST(Sections, AreKeptAsTheyWereMade)
{
    WalkTally met;
    CompanyFounding founding;
    founding.company.id = "walked";
    founding.books = walked(77, 300, met);
    for (auto& member : founding.books.members)
        member.email = member.id + "@walked.example";
    TestService service;
    service.write([&](Connection& connection) {
        founding.write(connection);
        EXPECT_EQ(CapitalRepository::changes(connection, "walked"), founding.books.capitalChanges);
        EXPECT_EQ(DividendRepository::changes(connection, "walked"), founding.books.dividendChanges);
    });
    EXPECT_EQ(service.problems(), "");
}

TEST(Sections, StayWholeWhenSeveralMembersSendEveryCommandTwice)
{
    SectionService service;
    RandomSections commands{4711};
    int done = 0;
    const auto twice = [&](const auto& command, const std::string& member) {
        const auto first = service.send(member, command);
        const auto again = service.send(member, command);
        ASSERT_EQ(again.status, first.status) << first.body << again.body;
        ASSERT_EQ(again.code(), first.code());
        done += first.status == 200;
    };
    for (int number = 0; number < 40; ++number) {
        const auto member = commands.actor();
        if (commands.changesCapital()) {
            auto command = commands.capitalFor(service.capital());
            command.idempotencyKey = fmt::format("k{}", number);
            ASSERT_NO_FATAL_FAILURE(twice(command, member));
        } else {
            auto command = commands.dividendFor(service.dividends());
            command.idempotencyKey = fmt::format("k{}", number);
            ASSERT_NO_FATAL_FAILURE(twice(command, member));
        }
        if (number % 6 == 5)
            ASSERT_EQ(service.problems(), "") << number;
    }
    EXPECT_EQ(service.capital().revision + service.dividends().revision, done) << "each was carried out once";
    EXPECT_GE(done, 8);
}

}

}
