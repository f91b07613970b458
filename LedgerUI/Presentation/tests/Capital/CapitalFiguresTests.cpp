#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Dividends/DividendActions.h"
#include "LedgerUI/Presentation/Records/CapitalWords.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/tests/CapitalWalk.h"

// The figures of capital and dividends against the entries of the ledger, over random histories; and who may do what.

namespace {

constexpr auto english = "en-US";

/// What an entry of the ledger moved.
std::int64_t moved(const LedgerSnapshot& books, const std::string& entryID)
{
    for (const auto& entry : books.transactions) {
        if (entry.id == entryID)
            return entry.legs.front().amountMinor;
    }
    ADD_FAILURE() << entryID << " is not in the ledger";
    return 0;
}

template <class Person>
std::string idOf(const std::vector<Person>& all, const std::string& name)
{
    return std::ranges::find(all, name, &Person::name)->id;
}

constexpr auto everybody = "Total";

/// What stands in the overview of a person, or of all together, under a head.
QString shown(const CapitalOverview& overview, const std::string& name, std::string_view head)
{
    const auto text = wordIn(english, capitalWords(), head);
    const auto& columns = overview.owners.columns;
    const auto column =
        static_cast<std::size_t>(std::ranges::find(columns, text, &RecordColumn::head) - columns.begin());
    if (name == everybody && overview.owners.total)
        return overview.owners.total->cells.at(column).text;
    for (const auto& row : overview.owners.rows) {
        if (row.cells.front().text == qString(name))
            return row.cells.at(column).text;
    }
    return QStringLiteral("no such row");
}

/// What the entries of the ledger say of a person: paid in, taken out and given back, and what is still owed.
struct LedgerFigures {
    std::int64_t contributed = 0;
    std::int64_t paidOut = 0;
    std::int64_t entitled = 0;
    std::int64_t unpaid = 0;
    std::int64_t advances = 0; // of which nothing has become of yet

    LedgerFigures& operator+=(const LedgerFigures& other)
    {
        contributed += other.contributed;
        paidOut += other.paidOut;
        entitled += other.entitled;
        unpaid += other.unpaid;
        advances += other.advances;
        return *this;
    }
};

LedgerFigures ledgerFigures(const LedgerSnapshot& books, const std::string& name, const std::string& currency)
{
    LedgerFigures figures;
    const auto owner = idOf(books.capital->participants, name);
    for (const auto& each : books.capital->contributions) {
        if (each.participantID == owner && each.currency == currency)
            figures.contributed += moved(books, each.transactionID);
    }
    std::int64_t before = 0; // by the baseline that was recorded last
    for (const auto& each : books.capital->baselines) {
        if (each.currency == currency)
            before = std::ranges::find(each.entries, owner, &CapitalAmountLine::participantID)->amountMinor;
    }
    figures.contributed += before;
    const auto participant = idOf(books.dividends->participants, name);
    for (const auto& batch : books.dividends->batches) {
        for (const auto& line : batch.lines) {
            if (line.participantID == participant && batch.currency == currency && !batch.cancelled)
                figures.entitled += line.amountMinor;
        }
    }
    for (const auto& each : books.dividends->movements) {
        if (each.participantID != participant || each.currency != currency)
            continue;
        const auto cash = each.transactionID ? moved(books, *each.transactionID) : 0;
        figures.paidOut -= cash;
        if (each.kind == DividendMovementKind::application && !each.reversedBy) {
            figures.unpaid -= each.amountMinor;
            figures.advances -= each.amountMinor;
        }
        // A payment or what undid one settles a line; all other money is an advance, given or given back.
        if (each.batchID)
            figures.unpaid += cash;
        else
            figures.advances -= cash;
    }
    figures.unpaid += figures.entitled;
    return figures;
}

class CapitalFigures : public testing::TestWithParam<unsigned> {};

}

TEST_P(CapitalFigures, EqualTheEntriesOfTheLedgerToTheMinorUnit)
{
    const RandomYear walked{GetParam()};
    const auto& books = walked.books();
    const auto year = Period::containing(Period::Span::year, std::chrono::year{2026} / std::chrono::January / 1);
    for (const std::string currency : walkedCurrencies) {
        const auto overview =
            CapitalOverviews::overview(books, {.period = year, .currency = currency}, "2026-12-31", english);
        ASSERT_TRUE(overview);
        const auto compare = [&](const std::string& name, const LedgerFigures& expected) {
            const auto digits = [&](std::int64_t minor) { return RecordText::amount(minor, currency, english).text; };
            EXPECT_EQ(shown(*overview, name, "column.recorded"), digits(expected.contributed)) << name << currency;
            EXPECT_EQ(shown(*overview, name, "column.netPaid"), digits(expected.paidOut)) << name << currency;
            EXPECT_EQ(shown(*overview, name, "column.entitlement"), digits(expected.entitled)) << name << currency;
            EXPECT_EQ(shown(*overview, name, "column.settled"), digits(expected.entitled - expected.unpaid))
                << name << currency;
            EXPECT_EQ(shown(*overview, name, "column.unpaid"), digits(expected.unpaid)) << name << currency;
            EXPECT_EQ(shown(*overview, name, "column.advances"), digits(expected.advances)) << name << currency;
        };
        LedgerFigures together;
        for (const std::string name : walkedPeople) {
            const auto expected = ledgerFigures(books, name, currency);
            compare(name, expected);
            together += expected;
        }
        compare(everybody, together);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, CapitalFigures, testing::Range(1U, 13U));

TEST(CapitalHistories, HoldEverythingThatAPersonCanDo)
{
    for (int action = 0; action < RandomYear::actions; ++action) {
        int times = 0;
        for (unsigned seed = 1; seed < 13; ++seed)
            times += RandomYear{seed}.timesDone(action);
        EXPECT_GT(times, 0) << "action " << action;
    }
}

namespace {

struct Standing {
    const char* name;
    const char* role;
    std::optional<std::vector<std::string>> permissions;
    const char* may; // one letter for each action, a dot where it is refused
};

void PrintTo(const Standing& each, std::ostream* out)
{
    *out << each.name;
}

/// The letters of the actions that are not grey for this member.
std::string actionsOf(const Standing& standing)
{
    auto books = capitalSample().books();
    books.currentMember.role = standing.role;
    books.currentMember.permissions = standing.permissions;
    std::string may;
    const auto add = [&](char letter, const QString& whyNot) { may += whyNot.isEmpty() ? letter : '.'; };
    add('c', CapitalActions::whyNot(CapitalAction::contribute, books, english));
    add('r', CapitalActions::whyNot(CapitalAction::reverse, books, english));
    add('o', CapitalActions::whyNot(CapitalAction::setParticipant, books, english));
    add('b', CapitalActions::whyNot(CapitalAction::setBaseline, books, english));
    add('s', CapitalActions::whyNot(CapitalAction::setOwnership, books, english));
    add('h', CapitalActions::whyNot(CapitalAction::setVisibility, books, english));
    may += ' ';
    add('a', DividendActions::whyNot(DividendAction::allocate, books, english));
    add('v', DividendActions::whyNot(DividendAction::advance, books, english));
    add('t', DividendActions::whyNot(DividendAction::setParticipant, books, english));
    add('h', DividendActions::whyNot(DividendAction::setVisibility, books, english));
    add('p', DividendActions::whyNot(DividendAction::pay, {.batchID = "d4", .participantID = "d1"}, books, "2026-11-20",
                                     english));
    add('y', DividendActions::whyNot(DividendAction::apply, {.batchID = "d10", .participantID = "d2"}, books,
                                     "2026-11-20", english));
    add('n', DividendActions::whyNot(DividendAction::returnAdvance, {.advanceID = "d7"}, books, "2026-11-20", english));
    add('k', DividendActions::whyNot(DividendAction::cancelBatch, {.batchID = "d10"}, books, "2026-11-20", english));
    add('u', DividendActions::whyNot(DividendAction::reverse, {.movementID = "d9"}, books, "2026-11-20", english));
    return may;
}

using Rights = std::vector<std::string>;

class CapitalRights : public testing::TestWithParam<Standing> {};

}

TEST_P(CapitalRights, GiveEveryRoleItsActions)
{
    EXPECT_EQ(actionsOf(GetParam()), GetParam().may);
}

INSTANTIATE_TEST_SUITE_P(
    Members, CapitalRights,
    testing::Values(
        Standing{
            "Everything", "owner",
            Rights{"manageCompany", "viewCapital", "postCapital", "correctCapital", "viewDividends", "postDividends"},
            "crobsh avthpynku"},
        Standing{"AdminWithoutMoney", "admin", Rights{"manageCompany"}, "..obsh ..th....."},
        Standing{"FinanceOfCapital", "finance", Rights{"viewCapital", "postCapital"}, "c..... ........."},
        Standing{"FinanceThatCorrects", "finance", Rights{"viewCapital", "correctCapital"}, ".r.... ........."},
        Standing{"FinanceOfDividends", "finance", Rights{"viewDividends", "postDividends"}, "...... av..pynku"},
        Standing{"PartnerThatLooks", "partner", Rights{"viewCapital", "viewDividends"}, "...... ........."},
        Standing{"PostsWithoutSeeing", "employee", Rights{"postCapital", "correctCapital", "postDividends"},
                 "...... ........."},
        Standing{"OwnerWithoutList", "owner", std::nullopt, "..obsh a.th.y.k."},
        Standing{"AdminWithoutList", "admin", std::nullopt, "...... ........."},
        Standing{"FinanceWithoutList", "finance", std::nullopt, "...... ........."},
        Standing{"Employee", "employee", Rights{}, "...... ........."}),
    [](const auto& each) { return std::string{each.param.name}; });
