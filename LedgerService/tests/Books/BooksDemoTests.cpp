#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerService/Books/BookInvariants.h"
#include "LedgerService/Books/Demonstration/DemoCompany.h"
#include "LedgerService/Books/Demonstration/DemoPlan.h"
#include "LedgerService/Books/Demonstration/DemoWords.h"

namespace LedgerService {

namespace {

struct Ending {
    std::string locale;
    std::string lastDay;
    std::string firstDay;
};

class DemoBooks : public testing::TestWithParam<Ending> {};

/// The lowest that each account ever held.
std::map<std::pair<std::string, std::string>, std::int64_t> lowestBalances(const Books& books)
{
    std::map<std::pair<std::string, std::string>, std::int64_t> running;
    std::map<std::pair<std::string, std::string>, std::int64_t> lowest;
    for (const auto& entry : books.entries) {
        for (const auto& leg : entry.legs) {
            const std::pair key{leg.accountID, leg.currency};
            running[key] += leg.amountMinor;
            lowest[key] = std::min(lowest[key], running[key]);
        }
    }
    return lowest;
}

TEST_P(DemoBooks, AreWholeSolventAndInOrderOfTime)
{
    const auto& [locale, lastDay, firstDay] = GetParam();
    const auto books = DemoCompany::make(locale, lastDay).books;

    EXPECT_EQ(BookInvariants::broken(books), std::vector<std::string>{});
    for (const auto& [key, minor] : lowestBalances(books))
        EXPECT_GE(minor, 0) << key.first << ' ' << key.second;
    EXPECT_EQ(books.entries.front().date, firstDay);
    EXPECT_EQ(books.settings->bookkeepingStartDate, firstDay);
    EXPECT_TRUE(std::ranges::is_sorted(books.entries, {}, &LedgerTransaction::createdAt));
    for (const auto& entry : books.entries) {
        EXPECT_EQ(entry.date, entry.createdAt.substr(0, 10));
        EXPECT_FALSE(entry.note.empty());
        EXPECT_FALSE(entry.note.contains('%')) << entry.note;
    }
    EXPECT_LE(books.entries.back().createdAt, lastDay + "T00:01:00.000Z");
    EXPECT_GE(books.entries.size(), 400U);
    EXPECT_LE(books.entries.size(), 600U);
}

INSTANTIATE_TEST_SUITE_P(
    Endings, DemoBooks,
    testing::Values(Ending{"en-US", "2026-11-21", "2024-11-01"}, Ending{"id-ID", "2024-02-29", "2022-02-01"},
                    Ending{"vi-VN", "2027-01-01", "2025-01-01"}, Ending{"zh-CN", "2025-12-31", "2023-12-01"},
                    Ending{"en-US", "2026-06-11", "2024-06-01"}, Ending{"en-US", "2028-03-24", "2026-03-01"},
                    Ending{"id-ID", "2031-08-31", "2029-08-01"}, Ending{"vi-VN", "2026-12-05", "2024-12-01"},
                    Ending{"zh-CN", "2027-05-17", "2025-05-01"}),
    [](const auto& each) {
        auto name = "UpTo" + each.param.lastDay;
        std::erase(name, '-');
        return name;
    });

TEST(DemoCompany, ShowsEveryKindInFiveCurrencies)
{
    const auto books = DemoCompany::make("en-US", "2026-11-21").books;
    std::map<std::string, int> kinds;
    std::set<std::string> currencies;
    std::set<std::string> purposes;
    int partialRefunds = 0;
    for (const auto& entry : books.entries) {
        ++kinds[entry.kind];
        purposes.insert(entry.transferPurpose.value_or("plain"));
        for (const auto& leg : entry.legs)
            currencies.insert(leg.currency);
        if (entry.originalTransactionID) {
            const auto* const sale = books.entry(*entry.originalTransactionID);
            partialRefunds += sale->legs[0].amountMinor + entry.legs[0].amountMinor > 0;
            EXPECT_TRUE(entry.note.contains(sale->note)) << entry.note;
        }
    }
    for (const auto* kind : {"income", "expense", "transfer", "exchange", "refund", "reversal", "opening"})
        EXPECT_GE(kinds[kind], 5) << kind;
    EXPECT_EQ(currencies, (std::set<std::string>{"CNY", "IDR", "JPY", "USD", "VND"}));
    EXPECT_EQ(purposes, (std::set<std::string>{"funding", "plain", "return"}));
    EXPECT_GE(partialRefunds, 5);
}

TEST(DemoCompany, ShowsCapitalAndDividendsInEveryState)
{
    const auto books = DemoCompany::make("en-US", "2026-11-21").books;
    const auto capital = CapitalHistory::stateAfter(books.capitalChanges);
    EXPECT_EQ(CapitalSummary::create(capital, "USD", {}, {})->totalMinor, 32'000'000);
    const auto rupiah = *CapitalSummary::create(capital, "IDR", {}, {});
    EXPECT_EQ(rupiah.recordedMinor, 67'500'000'000);
    EXPECT_FALSE(rupiah.historyKnown);
    EXPECT_EQ(rupiah.participants.at(2).ownershipBps, 1'750);
    EXPECT_EQ(
        std::ranges::count_if(capital.contributions, [](const auto& each) { return each.reversedBy.has_value(); }), 1);

    const auto dividends = DividendHistory::stateAfter(books.dividendChanges);
    EXPECT_EQ(DividendSummary::create(dividends, "IDR", {}, {})->unpaidMinor, 11'250'000'045);
    const auto dollars = *DividendSummary::create(dividends, "USD", {}, {});
    EXPECT_EQ(dollars.unpaidMinor, 0);
    EXPECT_EQ(dollars.participants.at(2).advanceMinor, 150'000);
    EXPECT_EQ(std::ranges::count_if(dividends.batches, &DividendBatch::cancelled), 1);
    std::set<std::string> kinds;
    for (const auto& each : dividends.movements)
        kinds.insert(each.kind);
    EXPECT_EQ(kinds, (std::set<std::string>{"advance", "application", "payment", "return", "reversal"}));
}

TEST(DemoCompany, IsTheSameForTheSameLanguageAndDay)
{
    const auto one = DemoCompany::make("id", "2026-11-21");
    const auto same = DemoCompany::make("id-ID", "2026-11-21");
    EXPECT_EQ(one.company, same.company);
    EXPECT_EQ(one.books, same.books);
}

TEST(DemoCompany, SharesNothingButItsShapeWithThatOfAnotherLanguage)
{
    std::set<std::string> unique;
    std::size_t expected = 0;
    for (const auto locale : AppLanguage::supportedLocales) {
        const auto made = DemoCompany::make(locale, "2026-11-21");
        EXPECT_EQ(made.company.demo->locale, locale);
        unique.insert({made.company.id, made.company.name, made.books.accounts[0].name});
        unique.insert(made.books.entries.front().id);
        for (const auto& member : made.books.members)
            unique.insert({member.id, member.userID, member.email});
        expected += 4 + 3 * made.books.members.size();
    }
    EXPECT_EQ(unique.size(), expected);
}

const Member& memberOf(const Books& books, std::string_view profile)
{
    return *std::ranges::find(books.members, profile, &Member::role);
}

TEST(DemoCompany, GivesEachProfileItsOwnRights)
{
    const auto books = DemoCompany::make("en-US", "2026-11-21").books;
    ASSERT_EQ(books.members.size(), DemoIdentity::profiles.size());
    const auto seenBy = [&](std::string_view profile) {
        return std::ranges::count_if(
            books.accounts, [&](const Account& account) { return memberOf(books, profile).can("view", account.id); });
    };
    const std::map<std::string_view, int> seen{
        {"owner", 8}, {"admin", 8}, {"finance", 8}, {"partner", 8}, {"employee", 1}};
    for (const auto profile : DemoIdentity::profiles) {
        EXPECT_EQ(seenBy(profile), seen.at(profile)) << profile;
        EXPECT_TRUE(memberOf(books, profile).canRecord()) << profile;
    }
    EXPECT_EQ(memberOf(books, "finance").email, "dewi.anggraini@en.demo.tallyfold.example");
    EXPECT_TRUE(memberOf(books, "owner").hasPermission("manageCompany"));
    EXPECT_FALSE(memberOf(books, "finance").hasPermission("manageCompany"));
    EXPECT_FALSE(memberOf(books, "partner").can("transferOut", "demo-en-account-cash"));
}

TEST(DemoCompany, HasCategoriesOnTwoLevelsWithNamesIconsAndPins)
{
    const auto books = DemoCompany::make("zh-CN", "2026-11-21").books;
    std::map<std::string, const Category*> byID;
    for (const auto& category : books.categories)
        byID[category.id] = &category;
    for (const auto& category : books.categories) {
        for (const auto locale : AppLanguage::supportedLocales)
            EXPECT_FALSE(category.names.find(locale)->second.empty()) << category.id;
        EXPECT_TRUE(std::filesystem::exists("/usr/share/bootstrap-icons/svg/" + category.symbol + ".svg"))
            << category.symbol;
        if (category.parentID) {
            const auto* const parent = byID.at(*category.parentID);
            EXPECT_EQ(parent->kind, category.kind) << category.id;
            EXPECT_FALSE(parent->parentID) << category.id;
        }
    }
    for (const auto& member : books.members) {
        for (const auto& id : *member.selectedCategoryIDs)
            EXPECT_TRUE(byID.contains(id)) << id;
    }
}

std::set<char> placeholders(std::string_view text)
{
    std::set<char> found;
    for (auto at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1))
        found.insert(text.at(at + 1));
    return found;
}

TEST(DemoWords, SayTheSameInFourLanguages)
{
    for (const auto* table : {&DemoWords::names(), &DemoWords::notes()}) {
        for (const auto& row : table->rows()) {
            for (const auto text : {row.chinese, row.indonesian, row.vietnamese, row.english}) {
                EXPECT_FALSE(text.empty()) << row.key;
                EXPECT_EQ(placeholders(text), placeholders(row.english)) << row.key;
            }
        }
    }
}

TEST(DemoWords, HoldEveryWordOfThePlan)
{
    const auto& names = DemoWords::names();
    for (const auto& routine : DemoPlan::routines()) {
        EXPECT_TRUE(DemoWords::notes().contains(routine.note)) << routine.note;
        for (const auto account : {routine.source, routine.target})
            EXPECT_TRUE(account.empty() || names.contains(account)) << account;
    }
    for (const auto profile : DemoIdentity::profiles)
        EXPECT_TRUE(names.contains(profile)) << profile;
    for (const auto* key :
         {"opening", "damaged", "overpaid", "wrongAmount", "wrongAccount", "postedTwice", "contribution", "wrongOwner",
          "dividendPaid", "dividendAdvance", "dividendBack", "dividendWrong", "dividendDropped"})
        EXPECT_TRUE(DemoWords::notes().contains(key)) << key;
}

}

}
