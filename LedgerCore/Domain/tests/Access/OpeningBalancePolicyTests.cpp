#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"

#include <gtest/gtest.h>

namespace {

using OpeningBalancePolicy::Refusal;

LedgerTransaction entry(std::string id, std::string_view kind, std::string date, std::int64_t amount)
{
    LedgerTransaction made;
    made.id = std::move(id);
    made.kind = kind;
    made.date = std::move(date);
    made.legs = {{"bank", "USD", amount}};
    return made;
}

/// A bank account in USD and VND on which the member holds "opening", with 500.00 USD from one opening entry.
LedgerSnapshot opened()
{
    LedgerSnapshot snapshot;
    snapshot.currentMember.id = "m";
    snapshot.currentMember.active = true;
    snapshot.currentMember.accountGrants = {{"bank", {"view", "opening"}}, {"float", {"view", "opening"}}};
    Account bank;
    bank.id = "bank";
    bank.currencies = {"USD", "VND"};
    bank.balances = {{"USD", 50000}};
    snapshot.accounts = {bank};
    snapshot.transactions = {entry("o1", EntryKind::opening, "2024-01-01", 50000)};
    return snapshot;
}

/// The opening of `opened`, reversed and linked both ways.
LedgerSnapshot reversed()
{
    auto snapshot = opened();
    auto reversal = entry("r1", EntryKind::reversal, "2024-01-05", -50000);
    reversal.reversalOf = "o1";
    snapshot.transactions.front().reversedBy = "r1";
    snapshot.transactions.push_back(reversal);
    snapshot.accounts.front().balances = {};
    return snapshot;
}

TEST(OpeningBalancePolicy, BooksOpeningsOnTheConfirmedStartElseToday)
{
    LedgerSnapshot snapshot;
    EXPECT_EQ(OpeningBalancePolicy::recordingDate(snapshot, "2026-11-20"), "2026-11-20");
    snapshot.financialSettings.emplace();
    EXPECT_EQ(OpeningBalancePolicy::recordingDate(snapshot, "2026-11-20"), "2026-11-20");
    snapshot.financialSettings->bookkeepingStartDate = "2024-01-01";
    EXPECT_EQ(OpeningBalancePolicy::recordingDate(snapshot, "2026-11-20"), "2024-01-01");
    snapshot.financialSettings->bookkeepingStartDate = "2024-02-30";
    EXPECT_EQ(OpeningBalancePolicy::recordingDate(snapshot, "2026-11-20"), std::nullopt);
}

TEST(OpeningBalancePolicy, CountsOnlyOpeningsThatWereNotReversed)
{
    const auto active = OpeningBalancePolicy::evaluate(opened(), "bank", "USD");
    EXPECT_TRUE(active.hasAuthority && active.historyComplete);
    EXPECT_EQ(active.activeOpeningIDs, std::vector<std::string>{"o1"});

    const auto undone = OpeningBalancePolicy::evaluate(reversed(), "bank", "USD");
    EXPECT_TRUE(undone.hasAuthority && undone.historyComplete);
    EXPECT_TRUE(undone.activeOpeningIDs.empty());
    EXPECT_EQ(OpeningBalancePolicy::whyNot(reversed(), "bank", "USD"), std::nullopt);
}

TEST(OpeningBalancePolicy, CountsAnOpeningOfSeveralLegsOnceAndArchivedAccountsAsClosed)
{
    auto snapshot = opened();
    snapshot.transactions.front().legs = {{"bank", "USD", 20000}, {"bank", "USD", 30000}};
    EXPECT_EQ(OpeningBalancePolicy::evaluate(snapshot, "bank", "USD").activeOpeningIDs, std::vector<std::string>{"o1"});
    snapshot.accounts.front().archived = true;
    const auto archived = OpeningBalancePolicy::evaluate(snapshot, "bank", "USD");
    EXPECT_FALSE(archived.hasAuthority);
    EXPECT_EQ(archived.activeOpeningIDs, std::vector<std::string>{"o1"});
}

struct OpeningCase {
    const char* name;
    void (*arrange)(LedgerSnapshot&);
    const char* account;
    const char* currency;
    std::optional<Refusal> refusal;
};

class OpeningRefusal : public testing::TestWithParam<OpeningCase> {};

TEST_P(OpeningRefusal, SaysWhatKeepsTheAccountFromAnOpeningBalance)
{
    auto snapshot = reversed();
    GetParam().arrange(snapshot);
    EXPECT_EQ(OpeningBalancePolicy::whyNot(snapshot, GetParam().account, GetParam().currency), GetParam().refusal);
}

constexpr auto asItStands = [](LedgerSnapshot&) {};

INSTANTIATE_TEST_SUITE_P(
    Books, OpeningRefusal,
    testing::Values(
        OpeningCase{"CurrencyWithoutEntries", asItStands, "bank", "VND", std::nullopt},
        OpeningCase{"UnknownAccount", asItStands, "nowhere", "USD", Refusal::noAuthority},
        OpeningCase{"CurrencyNotHeld", asItStands, "bank", "EUR", Refusal::noAuthority},
        OpeningCase{"InactiveMember", [](LedgerSnapshot& books) { books.currentMember.active = false; }, "bank", "USD",
                    Refusal::noAuthority},
        OpeningCase{"NotGranted",
                    [](LedgerSnapshot& books) { books.currentMember.accountGrants = {{{"bank", {"view"}}}}; }, "bank",
                    "USD", Refusal::noAuthority},
        OpeningCase{"Archived", [](LedgerSnapshot& books) { books.accounts.front().archived = true; }, "bank", "USD",
                    Refusal::archived},
        OpeningCase{"SomebodyElsesFloat",
                    [](LedgerSnapshot& books) {
                        books.accounts.front().id = "float";
                        books.accounts.front().ownerMemberID = "other";
                    },
                    "float", "USD", Refusal::notResponsible},
        OpeningCase{"AlreadyOpened", [](LedgerSnapshot& books) { books = opened(); }, "bank", "USD",
                    Refusal::alreadyOpened},
        OpeningCase{"ReversalOfOpeningMissing", [](LedgerSnapshot& books) { books.transactions.pop_back(); }, "bank",
                    "USD", Refusal::historyIncomplete},
        OpeningCase{"ReversedByAnEntryOfAnotherKind",
                    [](LedgerSnapshot& books) { books.transactions.back().kind = EntryKind::expense; }, "bank", "USD",
                    Refusal::historyIncomplete},
        OpeningCase{"ReversalNamesAnotherEntry",
                    [](LedgerSnapshot& books) { books.transactions.back().reversalOf = "other"; }, "bank", "USD",
                    Refusal::historyIncomplete},
        OpeningCase{"ReversalOfAnEntryThatDoesNotKnowIt",
                    [](LedgerSnapshot& books) {
                        books.transactions.front().kind = EntryKind::income;
                        books.transactions.front().reversedBy.reset();
                    },
                    "bank", "USD", Refusal::historyIncomplete},
        OpeningCase{"BalanceIsMoreThanTheVisibleEntries",
                    [](LedgerSnapshot& books) { books.accounts.front().balances = {{"USD", 1}}; }, "bank", "USD",
                    Refusal::historyIncomplete},
        OpeningCase{"NoEntriesAtAll",
                    [](LedgerSnapshot& books) {
                        books.transactions.clear();
                        books.accounts.front().balances = {{"USD", 1}};
                    },
                    "bank", "USD", std::nullopt}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(OpeningBalancePolicy, JudgesAllAccountsAsItJudgesEach)
{
    auto snapshot = opened();
    auto other = snapshot.accounts.front();
    other.id = "float";
    other.currencies = {"USD"};
    snapshot.accounts.push_back(other);
    const auto all = OpeningBalancePolicy::evaluateAll(snapshot);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0], OpeningBalancePolicy::evaluate(snapshot, "bank", "USD"));
    EXPECT_EQ(all[1], OpeningBalancePolicy::evaluate(snapshot, "bank", "VND"));
    EXPECT_EQ(all[2].accountID, "float");
    EXPECT_EQ(all[2].activeOpeningIDs.size() + all[1].activeOpeningIDs.size(), 0u);
}

TEST(OpeningBalancePolicy, FindsTheEarliestDayWhateverTheOrderOfEntries)
{
    auto snapshot = opened();
    snapshot.transactions.push_back(entry("t2", EntryKind::income, "2023-12-31", 1));
    snapshot.transactions.push_back(entry("t3", EntryKind::income, "", 1));
    EXPECT_EQ(OpeningBalancePolicy::earliestVisibleTransactionDay(snapshot), "2023-12-31");
    EXPECT_EQ(OpeningBalancePolicy::earliestVisibleTransactionDay({}), std::nullopt);
}

TEST(OpeningBalancePolicy, SaysWhichDayAndWhetherHistoryStandsBeforeIt)
{
    using OpeningBalancePolicy::RecordingDay;
    auto books = opened(); // its one entry is of 2024-01-01
    const auto recordingDay = [](const LedgerSnapshot& snapshot, std::string_view today) {
        return OpeningBalancePolicy::recordingDay(snapshot, today,
                                                  OpeningBalancePolicy::earliestVisibleTransactionDay(snapshot));
    };
    EXPECT_EQ(recordingDay(books, "2024-01-01"),
              (RecordingDay{.day = "2024-01-01", .basis = RecordingDay::Basis::today}));
    EXPECT_EQ(recordingDay(books, "2026-11-20"),
              (RecordingDay{.day = "2026-11-20", .basis = RecordingDay::Basis::today, .historySince = "2024-01-01"}));
    books.financialSettings.emplace().bookkeepingStartDate = "2024-01-01";
    EXPECT_EQ(recordingDay(books, "2026-11-20"),
              (RecordingDay{.day = "2024-01-01", .basis = RecordingDay::Basis::startDate}));
    books.financialSettings->bookkeepingStartDate = "soon";
    EXPECT_EQ(recordingDay(books, "2026-11-20"), std::nullopt);
}

/// "bank" can still take VND, "float" USD and EUR; "closed" is archived and "other" not granted.
LedgerSnapshot severalAccounts()
{
    auto books = opened();
    for (const auto* id : {"closed", "other", "float"}) {
        auto& account = books.accounts.emplace_back();
        account.id = id;
        account.currencies = {"USD", "EUR"};
        account.archived = account.id == "closed";
    }
    books.currentMember.accountGrants->push_back({"closed", {"view", "opening"}});
    return books;
}

TEST(OpeningBalancePolicy, OffersOnlyWhatCanStillBeOpened)
{
    const auto books = severalAccounts();
    std::string offered;
    for (const auto& each : OpeningBalancePolicy::eligible(books)) {
        for (const auto& currency : each.currencies)
            offered += each.account->id + ":" + currency + " ";
    }
    EXPECT_EQ(offered, "bank:VND float:USD float:EUR ");
}

TEST(OpeningBalancePolicy, PreselectsWhatWasAskedForOrIsTheOnlyOne)
{
    using OpeningBalancePolicy::preselected;
    using Chosen = OpeningBalancePolicy::Preselection;
    const auto books = severalAccounts();
    auto offered = OpeningBalancePolicy::eligible(books);
    EXPECT_EQ(preselected(offered), std::nullopt);
    EXPECT_EQ(preselected(offered, "closed", "USD"), std::nullopt);
    EXPECT_EQ(preselected(offered, "float"), (Chosen{"float"}));
    EXPECT_EQ(preselected(offered, "float", "EUR"), (Chosen{"float", "EUR"}));
    EXPECT_EQ(preselected(offered, "bank", "USD"), (Chosen{"bank", "VND"})); // dollars are opened already
    offered.pop_back();
    EXPECT_EQ(preselected(offered, "closed"), (Chosen{"bank", "VND"}));
    EXPECT_EQ(preselected({}), std::nullopt);
}

}
