#include <array>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Dividends/DividendActions.h"
#include "LedgerUI/Presentation/Records/CapitalWords.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

// The figures of capital and dividends against the entries of the ledger, over random histories; and who may do what.

namespace {

constexpr auto english = "en-US";
constexpr std::array people{"Budi", "Chen", "Huong"};
constexpr std::array currencies{"IDR", "USD"};

/// A year of capital and dividends in which everything happens that a person can do, in any order.
class RandomYear {
public:
    explicit RandomYear(unsigned seed) : m_random{seed}
    {
        constexpr std::array ratios{"45", "30", "25"};
        for (const auto* name : people)
            m_sample.owner(name);
        for (std::size_t at = 0; at < people.size(); ++at)
            m_sample.participant(people[at], ratios[at]);
        for (int step = 0; step < 300; ++step)
            live(step);
    }

    [[nodiscard]] const LedgerSnapshot& books() const { return m_sample.books(); }
    [[nodiscard]] int timesDone(int action) const { return m_done.contains(action) ? m_done.at(action) : 0; }
    static constexpr int actions = 9;

private:
    std::size_t under(std::size_t count) { return std::uniform_int_distribution<std::size_t>{0, count - 1}(m_random); }
    std::string amount(const std::string& currency, std::int64_t most)
    {
        const auto minor = std::uniform_int_distribution<std::int64_t>{1, std::max<std::int64_t>(1, most)}(m_random);
        return Money::formatDigits(minor, currency, english);
    }
    template <class Record>
    std::string anyOf(const std::vector<Record>& records)
    {
        return records.empty() ? "none" : records[under(records.size())].id;
    }
    template <class Built>
    void take(int action, const Built& built)
    {
        if (!built)
            return; // what the rules refuse does not happen
        m_sample.apply(built);
        ++m_done[action];
    }

    void live(int step)
    {
        using namespace std::chrono;
        const auto day = LedgerDay::format(sys_days{year{2026} / January / 2} + days{step});
        const CommandIssue issue{day, "walk"};
        const auto action = static_cast<int>(under(actions));
        if (action < 2)
            takeCapital(action, issue);
        else if (action < 5)
            takeNew(action, issue);
        else
            takeSettlement(action, issue);
    }
    void takeCapital(int action, const CommandIssue& issue)
    {
        const auto& books = m_sample.books();
        const std::string currency = currencies[under(2)];
        if (action == 0)
            return take(0, CapitalCommands::contribute(CapitalContext::of(books), issue,
                                                       {.participantID = anyOf(books.capital->participants),
                                                        .currency = currency,
                                                        .amount = amount(currency, 900'000),
                                                        .accountID = "Operating bank"},
                                                       english));
        const auto id = anyOf(books.capital->contributions);
        take(1, CapitalCommands::reverse(CapitalContext::of(books, id), issue, id, {}));
    }
    void takeNew(int action, const CommandIssue& issue)
    {
        const auto context = DividendContext::of(m_sample.books());
        const std::string currency = currencies[under(2)];
        if (action == 2) {
            std::vector<DividendCommands::ShareText> shares;
            for (const auto& each : context.state.participants)
                shares.push_back({each.id, std::to_string(each.ratioBps / 100)});
            return take(
                2,
                DividendCommands::allocate(
                    context, issue,
                    {.period = issue.date, .currency = currency, .amount = amount(currency, 700'000), .shares = shares},
                    english));
        }
        if (action == 3)
            return take(3, DividendCommands::advance(context, issue,
                                                     {.participantID = anyOf(context.state.participants),
                                                      .currency = currency,
                                                      .amount = amount(currency, 200'000),
                                                      .accountID = "Operating bank"},
                                                     english));
        take(4, DividendCommands::cancelBatch(context, issue, anyOf(context.state.batches), {}));
    }
    void takeSettlement(int action, const CommandIssue& issue)
    {
        const auto& books = m_sample.books();
        const auto context = DividendContext::of(books);
        const auto movement = anyOf(books.dividends->movements);
        const std::string currency = currencies[under(2)];
        const DividendCommands::Settlement settled{.batchID = anyOf(books.dividends->batches),
                                                   .participantID = anyOf(books.dividends->participants),
                                                   .advanceID = movement,
                                                   .amount = amount(currency, 150'000),
                                                   .accountID = "Operating bank"};
        if (action == 5)
            return take(5, DividendCommands::pay(context, issue, settled, english));
        if (action == 6)
            return take(6, DividendCommands::apply(context, issue, settled, english));
        if (action == 7)
            return take(7, DividendCommands::returnAdvance(context, issue, settled, english));
        take(8, DividendCommands::reverse(DividendContext::of(books, movement), issue, movement, {}));
    }

    CapitalSample m_sample{capitalGround()};
    std::mt19937 m_random;
    std::map<int, int> m_done;
};

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

/// What stands in the overview of a person under a head.
QString shown(const CapitalOverview& overview, const std::string& name, std::string_view head)
{
    const auto text = wordIn(english, capitalWords(), head);
    const auto& columns = overview.owners.columns;
    const auto column = std::ranges::find(columns, text, &RecordColumn::head) - columns.begin();
    for (const auto& row : overview.owners.rows) {
        if (row.cells.front().text == qString(name))
            return row.cells.at(static_cast<std::size_t>(column)).text;
    }
    return QStringLiteral("no such row");
}

/// What the entries of the ledger say of a person: paid in, taken out, and what is still owed.
struct LedgerFigures {
    std::int64_t contributed = 0;
    std::int64_t paidOut = 0;
    std::int64_t unpaid = 0;
};

LedgerFigures ledgerFigures(const LedgerSnapshot& books, const std::string& name, const std::string& currency)
{
    LedgerFigures figures;
    const auto owner = idOf(books.capital->participants, name);
    for (const auto& each : books.capital->contributions) {
        if (each.participantID == owner && each.currency == currency)
            figures.contributed += moved(books, each.transactionID);
    }
    const auto participant = idOf(books.dividends->participants, name);
    for (const auto& batch : books.dividends->batches) {
        for (const auto& line : batch.lines) {
            if (line.participantID == participant && batch.currency == currency && !batch.cancelled)
                figures.unpaid += line.amountMinor;
        }
    }
    for (const auto& each : books.dividends->movements) {
        if (each.participantID != participant || each.currency != currency)
            continue;
        const auto cash = each.transactionID ? moved(books, *each.transactionID) : 0;
        figures.paidOut -= cash;
        if (each.kind == DividendMovementKind::application && !each.reversedBy)
            figures.unpaid -= each.amountMinor;
        if (each.batchID)
            figures.unpaid += cash; // a payment, or what undid one
    }
    return figures;
}

class CapitalFigures : public testing::TestWithParam<unsigned> {};

}

TEST_P(CapitalFigures, EqualTheEntriesOfTheLedgerToTheMinorUnit)
{
    const RandomYear walked{GetParam()};
    const auto& books = walked.books();
    const auto year = Period::containing(Period::Span::year, std::chrono::year{2026} / std::chrono::January / 1);
    for (const std::string currency : currencies) {
        const auto overview =
            CapitalOverviews::overview(books, {.period = year, .currency = currency}, "2026-12-31", english);
        ASSERT_TRUE(overview);
        const auto digits = [&](std::int64_t minor) { return RecordText::amount(minor, currency, english).text; };
        for (const std::string name : people) {
            const auto expected = ledgerFigures(books, name, currency);
            EXPECT_EQ(shown(*overview, name, "column.recorded"), digits(expected.contributed)) << name << currency;
            EXPECT_EQ(shown(*overview, name, "column.netPaid"), digits(expected.paidOut)) << name << currency;
            EXPECT_EQ(shown(*overview, name, "column.unpaid"), digits(expected.unpaid)) << name << currency;
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
    may += ' ';
    add('a', DividendActions::whyNot(DividendAction::allocate, books, english));
    add('v', DividendActions::whyNot(DividendAction::advance, books, english));
    add('t', DividendActions::whyNot(DividendAction::setParticipant, books, english));
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
            "crobs avtpynku"},
        Standing{"AdminWithoutMoney", "admin", Rights{"manageCompany"}, "..obs ..t....."},
        Standing{"FinanceOfCapital", "finance", Rights{"viewCapital", "postCapital"}, "c.... ........"},
        Standing{"FinanceThatCorrects", "finance", Rights{"viewCapital", "correctCapital"}, ".r... ........"},
        Standing{"FinanceOfDividends", "finance", Rights{"viewDividends", "postDividends"}, "..... av.pynku"},
        Standing{"PartnerThatLooks", "partner", Rights{"viewCapital", "viewDividends"}, "..... ........"},
        Standing{"PostsWithoutSeeing", "employee", Rights{"postCapital", "correctCapital", "postDividends"},
                 "..... ........"},
        Standing{"Employee", "employee", Rights{}, "..... ........"}),
    [](const auto& each) { return std::string{each.param.name}; });
