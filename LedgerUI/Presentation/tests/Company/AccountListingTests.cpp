#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QCoreApplication>

#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerUI/Presentation/Accounts/AccountBrowser.h"
#include "LedgerUI/Presentation/Accounts/AccountDetail.h"
#include "LedgerUI/Presentation/Accounts/AccountTableModel.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

AccountBookPointer accountsOf(const SnapshotBuilder& books)
{
    return std::make_shared<const AccountBook>(books.share(), sampleToday);
}

AccountListing listed(const SnapshotBuilder& books, AccountQuery query = {})
{
    return accountListing(accountsOf(books), std::move(query), "en-US");
}

/// "Company accounts" / "Operating bank USD +2,500.00 −10.00 1,234.00": a line per row.
std::vector<std::string> dump(const AccountListing& listing)
{
    std::vector<std::string> rows;
    for (const auto& row : listing.rows) {
        if (row.isHead)
            rows.push_back(row.name.toStdString());
        else
            rows.push_back(QStringList{row.isFirst ? row.name : QStringLiteral("~"), row.currency,
                                       row.incoming.figure(), row.outgoing.figure(), row.balance.figure()}
                               .join(QLatin1Char{' '})
                               .toStdString());
    }
    return rows;
}

std::string names(const AccountListing& listing)
{
    QStringList rows;
    for (const auto& row : listing.rows) {
        if (row.isFirst && !row.isHead)
            rows << row.name;
    }
    return rows.join(QStringLiteral(", ")).toStdString();
}

std::string dump(const std::vector<MoneyText>& amounts)
{
    QStringList texts;
    for (const auto& amount : amounts)
        texts << amount.text().replace(QChar::Nbsp, QLatin1Char{' '});
    return texts.join(QStringLiteral(", ")).toStdString();
}

SnapshotBuilder withArchived()
{
    auto books = sampleLedger();
    Account closed;
    closed.id = closed.name = "Áo cũ";
    closed.archived = true;
    closed.currencies = {"USD"};
    books.account(closed);
    return books;
}

std::string property(const AccountDetail& detail, const char* label)
{
    for (const auto& each : detail.properties) {
        if (each.label == QLatin1String{label})
            return QString{each.value}.replace(QChar::Nbsp, QLatin1Char{' '}).toStdString();
    }
    return {};
}

AccountDetail detailOf(const SnapshotBuilder& books, std::string_view account, std::string_view currency)
{
    const auto book = accountsOf(books);
    return accountDetail(*book, *book->line(account, currency), "en-US");
}

}

TEST(AccountListing, GroupsAccountsWithALineForEachCurrencyAndWhatCameAndWentThisMonth)
{
    const auto listing = listed(sampleLedger());
    EXPECT_EQ(dump(listing),
              std::vector<std::string>({"Company accounts", "Operating bank USD +99.00 −787.50 11,811.50",
                                        "~ IDR – −4,385,200 −4,385,200", "Singapore USD – −12,000.00 −12,000.00",
                                        "~ SGD +16,074.00 – 16,074.00", "Employee floats",
                                        "Rizky float USD +50.00 – 50.00"}));
    EXPECT_EQ(dump(listing.totals), "IDR −4,385,200, USD −138.50, SGD 16,074.00");
    EXPECT_EQ(listing.accounts, 3U);
}

/// An opening balance says what was there before; neither it nor what takes it back came in or went out.
TEST(AccountListing, CountsNoOpeningAmongWhatCameIn)
{
    auto books = snapshot().account("bank", {"USD"}).grantAll();
    LedgerTransaction opening;
    opening.id = "o1";
    opening.kind = EntryKind::opening;
    opening.date = "2026-11-02";
    opening.legs = {{"bank", "USD", 5000}};
    opening.reversedBy = "v1";
    books.entry(opening);
    auto undo = opening;
    undo.id = "v1";
    undo.kind = EntryKind::reversal;
    undo.legs = {{"bank", "USD", -5000}};
    undo.reversedBy.reset();
    undo.reversalOf = "o1";
    books.entry(undo).income("i1", "2026-11-03", "bank", "USD", 700, "sales");
    EXPECT_EQ(dump(listed(books)), std::vector<std::string>({"Company accounts", "bank USD +7.00 – 7.00"}));
}

TEST(AccountListing, FindsByNamePersonOrCurrencyWithoutDiacritics)
{
    const auto found = [](const char* typed) {
        return names(listed(withArchived(), {.search = QString::fromUtf8(typed), .showsArchived = true}));
    };
    EXPECT_EQ(found("BANK"), "Operating bank");
    EXPECT_EQ(found("nguyen"), "Rizky float") << "the one who answers for it";
    EXPECT_EQ(found(" sgd "), "Singapore");
    EXPECT_EQ(found("ao cu"), "Áo cũ");
    const auto nothing = listed(withArchived(), {.search = QStringLiteral("ao cu")});
    EXPECT_EQ(nothing.notice->reason, AccountNotice::Reason::noMatch) << "archived ones only when they are shown";
    EXPECT_TRUE(nothing.notice->sentence.contains(QLatin1String{"ao cu"}));
}

TEST(AccountListing, SortsInsideItsGroups)
{
    auto books = sampleLedger();
    books.account("Agency", {"SGD"});
    const auto sorted = [&](AccountSort sort) { return names(listed(books, {.search = {}, .sort = std::move(sort)})); };
    const AccountSort byName;
    EXPECT_EQ(sorted(byName), "Agency, Operating bank, Singapore, Rizky float");
    EXPECT_EQ(sorted(byName.by(AccountSort::Key::name)), "Singapore, Operating bank, Agency, Rizky float");
    const auto byDollars = byName.by(AccountSort::Key::balance, "USD");
    EXPECT_EQ(sorted(byDollars), "Operating bank, Singapore, Agency, Rizky float") << "without the currency last";
    EXPECT_EQ(sorted(byDollars.turned()), "Singapore, Operating bank, Agency, Rizky float");
    EXPECT_EQ(sorted(byDollars.by(AccountSort::Key::balance, "SGD")), "Singapore, Agency, Operating bank, Rizky float");
}

TEST(AccountListing, SaysWhyItIsEmpty)
{
    using enum AccountNotice::Reason;
    EXPECT_EQ(listed(snapshot()).notice->reason, noAccounts);
    auto clerk = snapshot().currentMember(SnapshotBuilder::person("m1", "Rizky"));
    EXPECT_EQ(listed(clerk).notice->reason, noAccess);
    auto closed = snapshot().account("bank", {"USD"});
    auto account = closed.build().accounts.front();
    account.archived = true;
    EXPECT_EQ(listed(snapshot().account(account)).notice->reason, onlyArchived);
    EXPECT_FALSE(listed(snapshot().account(account), {.search = {}, .showsArchived = true}).notice);
}

TEST(AccountDetail, TellsBalanceYearPropertiesAndLatestMovements)
{
    const auto detail = detailOf(sampleLedger(), "Operating bank", "USD");
    EXPECT_EQ(detail.balance.figure(), QStringLiteral("11,811.50"));
    const std::vector<std::int64_t> ends{detail.trend->values.begin(), detail.trend->values.end()};
    EXPECT_EQ(ends, std::vector<std::int64_t>({0, 0, 0, 0, 0, 0, 0, 0, 0, 1000000, 1250000, 1181150}));
    EXPECT_EQ(property(detail, "Purpose"), "Company account");
    EXPECT_EQ(property(detail, "Currencies"), "USD, IDR");
    EXPECT_EQ(property(detail, "Opening balance"), "1 September 2026\nUSD 10,000.00");
    EXPECT_EQ(property(detail, "Your rights on this account"), "All rights");
    std::vector<std::string> latest;
    for (const auto& each : detail.latest)
        latest.push_back(QStringList{each.day, each.title, each.amount.figure()}.join(QLatin1Char{' '}).toStdString());
    EXPECT_EQ(latest, std::vector<std::string>({"9 Nov Typed twice +99.00", "9 Nov Utilities › Electricity −99.00",
                                                "7 Nov Refund −200.00", "5 Nov Funding −50.00",
                                                "2 Nov Điện văn phòng −438.50"}));
}

TEST(AccountDetail, NamesTheYearOfAMovementOfAnotherOne)
{
    auto books = snapshot().account("Old", {"USD"}).grantAll();
    const auto detail = detailOf(books.income("i1", "2025-12-30", "Old", "USD", 500, "sales"), "Old", "USD");
    ASSERT_EQ(detail.latest.size(), 1U);
    EXPECT_EQ(detail.latest.front().day, QStringLiteral("30 Dec 2025"));
}

TEST(AccountDetail, NamesThePeopleOfAFloat)
{
    auto books = sampleLedger();
    auto funder = SnapshotBuilder::person("m3", "Dewi Anggraini");
    funder.accountGrants = std::vector<AccountGrant>{{"Rizky float", {"transferIn"}}};
    books.member(funder);
    auto float_ = books.build().accounts.back();
    float_.id = float_.name = "Second float";
    float_.returnAccountID = "Singapore";
    books.account(float_);
    EXPECT_EQ(property(detailOf(books, "Rizky float", "USD"), "Operator"), "Nguyễn Thị Hương");
    EXPECT_EQ(property(detailOf(books, "Rizky float", "USD"), "May fund it"), "Mira Owner, Dewi Anggraini");
    EXPECT_EQ(property(detailOf(books, "Second float", "USD"), "Returns to"), "Singapore");
    EXPECT_EQ(property(detailOf(books, "Second float", "USD"), "Your rights on this account"), "View");
}

/// Offered exactly where the policy lets it, and a sentence everywhere else.
TEST(AccountDetail, OffersAnOpeningBalanceOrSaysWhyNot)
{
    auto books = snapshot().account("bank", {"USD", "IDR"}).account("other", {"USD"}).grantAll();
    books.grant("nowhere", {});
    books.entry("o1", EntryKind::opening, "2026-11-01", {{"bank", "USD", 100}});
    EXPECT_FALSE(detailOf(books, "bank", "USD").offersOpening);
    EXPECT_TRUE(detailOf(books, "bank", "IDR").offersOpening);
    EXPECT_EQ(property(detailOf(books, "bank", "IDR"), "Opening balance"), "Not recorded yet");
    auto partial = books;
    partial.income("i", "2026-11-02", "other", "USD", 500, "").balance("other", "USD", 1);
    EXPECT_FALSE(detailOf(partial, "other", "USD").offersOpening);
    EXPECT_TRUE(property(detailOf(partial, "other", "USD"), "Opening balance").starts_with("The entries that you see"));
    EXPECT_FALSE(detailOf(partial, "other", "USD").trend) << "what the entries do not explain is not drawn";
    auto reader = snapshot().account("bank", {"USD"}).grant("bank", {"view"});
    EXPECT_TRUE(property(detailOf(reader, "bank", "USD"), "Opening balance").starts_with("You may not"));
}

TEST(AccountTableModel, KeepsTheIdentityOfItsRowsAndNeverLetsAHeadBeChosen)
{
    AccountTableModel model;
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    const auto show = [&](const SnapshotBuilder& books, AccountQuery query = {}) {
        model.present(std::make_shared<const AccountListing>(listed(books, std::move(query))));
    };
    show(withArchived());
    const QPersistentModelIndex kept = model.index(model.rowOf("Singapore/SGD"), 0);
    show(withArchived(), {.search = {}, .showsArchived = true});
    EXPECT_EQ(kept.row(), model.rowOf("Singapore/SGD"));
    show(withArchived(), {.search = {}, .showsArchived = true, .sort = AccountSort{}.turned()});
    EXPECT_EQ(kept.row(), model.rowOf("Singapore/SGD"));
    EXPECT_EQ(model.flags(model.index(0, 0)) & Qt::ItemIsSelectable, Qt::NoItemFlags);
    EXPECT_NE(model.flags(kept) & Qt::ItemIsSelectable, Qt::NoItemFlags);
    EXPECT_EQ(model.index(kept.row(), AccountTableModel::balance).data(Qt::AccessibleTextRole).toString().toStdString(),
              "16,074.00 Singapore dollar");
}

/// Large books are gone through elsewhere; only the newest ones are ever shown.
TEST(AccountBrowser, ShowsTheNewestBooksOnceTheyAreReady)
{
    auto books = snapshot().account("bank", {"USD"}).grantAll();
    for (int at = 0; at < 2100; ++at)
        books.income("i" + std::to_string(at), "2026-11-03", "bank", "USD", 100, "");
    AccountBrowser browser;
    browser.open(books.share(), "en-US", sampleToday);
    EXPECT_TRUE(browser.isPreparing());
    EXPECT_FALSE(browser.listing());
    books.income("last", "2026-11-04", "bank", "USD", 1, "");
    browser.open(books.share(), "en-US", sampleToday);
    waitUntil([&] { return !browser.isPreparing(); });
    EXPECT_EQ(dump(browser.listing()->totals), "USD 2,100.01");
    browser.setQuery({.search = QStringLiteral("none")});
    EXPECT_TRUE(browser.listing()->notice);
    browser.open(nullptr, "en-US", sampleToday);
    EXPECT_FALSE(browser.listing());
}
