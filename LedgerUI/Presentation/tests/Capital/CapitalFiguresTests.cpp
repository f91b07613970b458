#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Dividends/DividendActions.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
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

const RecordRow* rowOf(const CapitalOverview& overview, const std::string& name)
{
    if (name == everybody)
        return overview.owners.total ? &*overview.owners.total : nullptr;
    for (const auto& row : overview.owners.rows) {
        if (row.cells.front().text == qString(name))
            return &row;
    }
    return nullptr;
}

/// What stands in a row of the overview under a head.
QString shown(const CapitalOverview& overview, const RecordRow& row, std::string_view head)
{
    const auto text = wordIn(english, capitalWords(), head);
    const auto& columns = overview.owners.columns;
    const auto column = std::ranges::find(columns, text, &RecordColumn::head);
    return column == columns.end() ? QStringLiteral("no such column")
                                   : row.cells.at(static_cast<std::size_t>(column - columns.begin())).text;
}

/// What the entries of the ledger and the records say of a person, at the end of the days that are asked for.
struct LedgerFigures {
    std::int64_t contributed = 0;
    std::int64_t lately = 0; // contributed within the days
    std::int64_t paidOut = 0;
    std::int64_t returned = 0;
    std::int64_t entitled = 0;
    std::int64_t unpaid = 0;
    std::int64_t advances = 0; // of which nothing has become of yet
    int ownership = 0;

    bool operator==(const LedgerFigures&) const = default;
    LedgerFigures& operator+=(const LedgerFigures& other)
    {
        contributed += other.contributed;
        lately += other.lately;
        paidOut += other.paidOut;
        returned += other.returned;
        entitled += other.entitled;
        unpaid += other.unpaid;
        advances += other.advances;
        ownership += other.ownership;
        return *this;
    }
};

struct Asked {
    const LedgerSnapshot& books;
    std::string currency;
    Period period;

    [[nodiscard]] std::string lastDay() const { return LedgerDay::format(period.lastDay()); }
};

bool hasBaseline(const Asked& asked)
{
    const auto& baselines = asked.books.capital->baselines;
    return std::ranges::find(baselines, asked.currency, &CapitalBaseline::currency) != baselines.end();
}

void addCapital(LedgerFigures& figures, const Asked& asked, const std::string& owner)
{
    const auto& capital = *asked.books.capital;
    for (const auto& each : capital.contributions) {
        if (each.participantID != owner || each.currency != asked.currency)
            continue;
        figures.contributed += moved(asked.books, each.transactionID);
        figures.lately += asked.period.contains(each.date) ? moved(asked.books, each.transactionID) : 0;
    }
    std::int64_t before = 0; // by the baseline that was recorded last
    for (const auto& each : capital.baselines) {
        if (each.currency == asked.currency)
            before = std::ranges::find(each.entries, owner, &CapitalAmountLine::participantID)->amountMinor;
    }
    figures.contributed += before;
    for (const auto& version : capital.ownershipVersions) { // each of a later day than the one before
        if (version.date > asked.lastDay())
            break;
        const auto line = std::ranges::find(version.entries, owner, &CapitalOwnershipLine::participantID);
        figures.ownership = line == version.entries.end() ? 0 : line->ownershipBps;
    }
}

void addMovement(LedgerFigures& figures, const Asked& asked, const DividendMovement& each)
{
    const auto& all = asked.books.dividends->movements;
    const bool isUndone =
        each.reversedBy && std::ranges::find(all, *each.reversedBy, &DividendMovement::id)->date <= asked.lastDay();
    const auto cash = each.transactionID ? moved(asked.books, *each.transactionID) : 0;
    // What was undone by the last day counts in no period; until then it counts in that of its own day.
    if (asked.period.contains(each.date) && !each.reversalOf && !isUndone) {
        figures.paidOut -= cash;
        figures.returned += std::max<std::int64_t>(cash, 0);
    }
    if (each.kind == DividendMovementKind::application && !isUndone) {
        figures.unpaid -= each.amountMinor;
        figures.advances -= each.amountMinor;
    }
    // A payment or what undid one settles a line; all other money is an advance, given or given back.
    if (each.batchID)
        figures.unpaid += cash;
    else
        figures.advances -= cash;
}

LedgerFigures ledgerFigures(const Asked& asked, const std::string& name)
{
    LedgerFigures figures;
    addCapital(figures, asked, idOf(asked.books.capital->participants, name));
    const auto participant = idOf(asked.books.dividends->participants, name);
    for (const auto& batch : asked.books.dividends->batches) {
        const bool isCancelled = batch.cancelled && batch.cancelledDate.value_or("") <= asked.lastDay();
        for (const auto& line : batch.lines) {
            if (line.participantID == participant && batch.currency == asked.currency && !isCancelled &&
                batch.date <= asked.lastDay())
                figures.entitled += line.amountMinor;
        }
    }
    for (const auto& each : asked.books.dividends->movements) {
        if (each.participantID == participant && each.currency == asked.currency && each.date <= asked.lastDay())
            addMovement(figures, asked, each);
    }
    figures.unpaid += figures.entitled;
    return figures;
}

void compare(const CapitalOverview& overview, const std::string& name, const LedgerFigures& expected,
             const Asked& asked)
{
    SCOPED_TRACE(name + " " + asked.currency + " " + asked.lastDay());
    const auto* row = rowOf(overview, name);
    if (!row) {
        const auto owner = std::ranges::find(asked.books.capital->participants, name, &CapitalParticipant::name);
        EXPECT_TRUE(owner != asked.books.capital->participants.end() && owner->archived && expected == LedgerFigures{})
            << "only who is gone without a figure is left out";
        return;
    }
    const auto digits = [&](std::int64_t minor) { return RecordText::amount(minor, asked.currency, english).text; };
    EXPECT_EQ(shown(overview, *row, "column.recorded"), digits(expected.contributed));
    EXPECT_EQ(shown(overview, *row, "column.total"),
              hasBaseline(asked) ? digits(expected.contributed) : QStringLiteral("no such column"));
    EXPECT_EQ(shown(overview, *row, "column.period"),
              RecordText::movement(expected.lately, asked.currency, english).text);
    EXPECT_EQ(shown(overview, *row, "column.netPaid"), digits(expected.paidOut));
    EXPECT_EQ(shown(overview, *row, "column.returned"), digits(expected.returned));
    EXPECT_EQ(shown(overview, *row, "column.entitlement"), digits(expected.entitled));
    EXPECT_EQ(shown(overview, *row, "column.settled"), digits(expected.entitled - expected.unpaid));
    EXPECT_EQ(shown(overview, *row, "column.unpaid"), digits(expected.unpaid));
    EXPECT_EQ(shown(overview, *row, "column.advances"), digits(expected.advances));
    if (expected.ownership > 0)
        EXPECT_EQ(shown(overview, *row, "column.ownership"), RecordText::percent(expected.ownership, english));
}

class CapitalFigures : public testing::TestWithParam<unsigned> {};

}

TEST_P(CapitalFigures, EqualTheEntriesOfTheLedgerToTheMinorUnit)
{
    using namespace std::chrono;
    const RandomYear walked{GetParam()};
    const std::vector<Period> periods{Period::containing(Period::Span::year, year{2026} / January / 1),
                                      Period::containing(Period::Span::quarter, year{2026} / May / 1),
                                      Period::containing(Period::Span::quarter, year{2026} / August / 1)};
    for (const std::string currency : walkedCurrencies) {
        for (const auto& period : periods) {
            const Asked asked{.books = walked.books(), .currency = currency, .period = period};
            const auto overview = CapitalOverviews::overview(asked.books, {.period = period, .currency = currency},
                                                             "2026-12-31", english);
            ASSERT_TRUE(overview);
            LedgerFigures together;
            for (const std::string name : walkedPeople) {
                const auto expected = ledgerFigures(asked, name);
                compare(*overview, name, expected, asked);
                together += expected;
            }
            compare(*overview, everybody, together, asked);
        }
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
    add('f', DividendActions::whyNot(DividendAction::fillFromOwnership, books, english));
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
            "crobsh avthpynkuf"},
        Standing{"AdminWithoutMoney", "admin", Rights{"manageCompany"}, "..obsh ..th......"},
        Standing{"AdminWhoSeesCapital", "admin", Rights{"manageCompany", "viewCapital"}, "..obsh ..th......"},
        Standing{"AdminWhoSeesBoth", "admin", Rights{"manageCompany", "viewCapital", "viewDividends"},
                 "..obsh ..th.....f"},
        Standing{"FinanceOfCapital", "finance", Rights{"viewCapital", "postCapital"}, "c..... .........."},
        Standing{"FinanceThatCorrects", "finance", Rights{"viewCapital", "correctCapital"}, ".r.... .........."},
        Standing{"FinanceOfDividends", "finance", Rights{"viewDividends", "postDividends"}, "...... av..pynku."},
        Standing{"PartnerThatLooks", "partner", Rights{"viewCapital", "viewDividends"}, "...... .........."},
        Standing{"PostsWithoutSeeing", "employee", Rights{"postCapital", "correctCapital", "postDividends"},
                 "...... .........."},
        Standing{"OwnerWithoutList", "owner", std::nullopt, "..obsh a.th.y.k.."},
        Standing{"AdminWithoutList", "admin", std::nullopt, "...... .........."},
        Standing{"FinanceWithoutList", "finance", std::nullopt, "...... .........."},
        Standing{"Employee", "employee", Rights{}, "...... .........."}),
    [](const auto& each) { return std::string{each.param.name}; });
