#include "LedgerUI/Presentation/Ledger/Rows/LedgerTableModel.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

using FailureReporting = QAbstractItemModelTester::FailureReportingMode;

LedgerBookPointer share(const SnapshotBuilder& books)
{
    return std::make_shared<const LedgerBook>(books.share(), "en-US");
}

/// A model under Qt's own rules, with a selection as a view would hold it.
struct WatchedModel {
    WatchedModel() { show(share(sampleLedger())); }

    void show(const LedgerBookPointer& book, const LedgerFilter& filter = {}, LedgerSort sort = {},
              LedgerGrouping grouping = LedgerGrouping::none)
    {
        auto next = std::make_shared<const LedgerListing>(listingOf(book, {filter, sort, sampleToday, grouping}));
        const auto change = changeBetween(model.listing().get(), *next);
        model.present(std::move(next), change);
    }
    void select(std::string_view id)
    {
        selection.setCurrentIndex(model.index(model.rowOf(id), 0),
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    void showByDay(const LedgerBookPointer& book, LedgerSort sort = {}) { show(book, {}, sort, LedgerGrouping::byDay); }
    /// The entries from the top, each day's after its number where it has a head.
    std::string shown() const
    {
        std::string all;
        for (int row = 0; row < model.rowCount(); ++row)
            all += (all.empty() ? "" : " ") +
                   (model.isHeadAt(row) ? std::to_string(model.lines()[static_cast<std::size_t>(row)].day()) + ":"
                                        : std::string{model.idAt(row)});
        return all;
    }
    std::string selected() const
    {
        std::string ids;
        for (const auto& index : selection.selectedRows())
            ids += model.row(index.row()).id.toStdString() + " ";
        return ids;
    }

    LedgerTableModel model;
    QAbstractItemModelTester tester{&model, FailureReporting::Fatal};
    QItemSelectionModel selection{&model};
};

TEST(LedgerTableModel, KeepsTheSelectionWhenARefreshBringsAndTakesEntries)
{
    WatchedModel watched;
    watched.select("t1");
    QSignalSpy resets(&watched.model, &QAbstractItemModel::modelReset);

    auto books = sampleLedger();
    books.expense("new", "2026-11-20", "Singapore", "USD", 100).expense("old", "2026-01-01", "Singapore", "USD", 5);
    auto whole = books.build();
    auto entries = whole.transactions.toVector();
    std::erase_if(entries, [](const auto& each) { return each.id == "x1" || each.id == "e1"; });
    whole.transactions = entries;
    const auto fresh = std::make_shared<const LedgerBook>(std::make_shared<const LedgerSnapshot>(whole), "en-US");
    watched.show(fresh);

    EXPECT_EQ(watched.shown(), "new v1 e3 r1 t1 e2 i1 o1 old");
    EXPECT_EQ(watched.selected(), "t1 ");
    EXPECT_EQ(resets.count(), 0);
}

TEST(LedgerTableModel, KeepsTheSelectionThroughAnotherOrder)
{
    WatchedModel watched;
    watched.select("i1");
    watched.show(watched.model.listing()->book, {}, {LedgerSort::Key::amount, LedgerSort::Direction::ascending});
    EXPECT_EQ(watched.selected(), "i1 ");
    EXPECT_EQ(watched.selection.currentIndex().row(), watched.model.rowOf("i1"));
}

TEST(LedgerTableModel, ShowsTheEntryAnewWhenARefreshChangesIt)
{
    WatchedModel watched;
    ASSERT_FALSE(watched.model.row(watched.model.rowOf("e1")).isReversed);
    QSignalSpy changes(&watched.model, &QAbstractItemModel::dataChanged);
    auto whole = sampleLedger().build();
    const auto changed = std::ranges::find(whole.transactions, "e1", &LedgerTransaction::id);
    whole.transactions[static_cast<std::size_t>(changed - whole.transactions.begin())].reversedBy = "later";
    const auto fresh = std::make_shared<const LedgerBook>(std::make_shared<const LedgerSnapshot>(whole), "en-US");
    watched.show(fresh);
    EXPECT_TRUE(watched.model.row(watched.model.rowOf("e1")).isReversed);
    EXPECT_EQ(changes.count(), 1);
}

TEST(LedgerTableModel, SurvivesALargeChangeAsOneReset)
{
    auto books = snapshot().account("bank", {"USD"});
    for (int each = 0; each < 400; ++each)
        (each % 2 ? books.income("i" + std::to_string(each), "2026-01-01", "bank", "USD", 1)
                  : books.expense("e" + std::to_string(each), "2026-01-01", "bank", "USD", 1));
    const auto book = share(books);
    WatchedModel watched;
    watched.show(book, {.kinds = {"income"}});
    QSignalSpy resets(&watched.model, &QAbstractItemModel::modelReset);
    watched.show(book);
    EXPECT_EQ(watched.model.rowCount(), 400);
    EXPECT_EQ(resets.count(), 1);
}

TEST(LedgerTableModel, HasBalancesWhileASingleAccountIsShown)
{
    WatchedModel watched;
    const auto book = share(sampleLedger());
    EXPECT_EQ(watched.model.columnCount(), 5);
    watched.show(book, {.accountIDs = {"Operating bank"}});
    ASSERT_EQ(watched.model.columnCount(), 6);
    const auto last = watched.model.index(watched.model.rowOf("e1"), LedgerTableModel::balance);
    EXPECT_EQ(last.data(Qt::AccessibleTextRole).toString(), QStringLiteral("12,061.50 US dollar"));
    EXPECT_EQ(watched.model.headerData(LedgerTableModel::balance, Qt::Horizontal, Qt::DisplayRole).toString(),
              QStringLiteral("Balance"));
    watched.show(book);
    EXPECT_EQ(watched.model.columnCount(), 5);
}

TEST(LedgerTableModel, HeadsEachDayThroughRefreshesAndOtherOrders)
{
    WatchedModel watched;
    watched.select("t1");
    watched.showByDay(share(sampleLedger()));
    EXPECT_EQ(watched.shown(), "20261109: v1 e3 20261107: r1 20261106: x1 20261105: t1 20261102: e1 e2 20261031: i1 "
                               "20260901: o1");
    EXPECT_EQ(watched.selected(), "t1 ");
    EXPECT_TRUE(watched.model.repeatsDay(watched.model.rowOf("v1"))) << "the head says it";
    EXPECT_FALSE(watched.model.flags(watched.model.index(0, 0)).testFlag(Qt::ItemIsSelectable));

    QSignalSpy resets(&watched.model, &QAbstractItemModel::modelReset);
    auto books = sampleLedger();
    books.expense("new", "2026-11-20", "Singapore", "USD", 100).expense("old", "2026-11-05", "Singapore", "USD", 5);
    auto whole = books.build();
    auto entries = whole.transactions.toVector();
    std::erase_if(entries, [](const auto& each) { return each.id == "x1" || each.id == "e1"; });
    whole.transactions = entries;
    watched.showByDay(
        std::make_shared<const LedgerBook>(std::make_shared<const LedgerSnapshot>(std::move(whole)), "en-US"));
    EXPECT_EQ(watched.shown(), "20261120: new 20261109: v1 e3 20261107: r1 20261105: t1 old 20261102: e2 20261031: i1 "
                               "20260901: o1");
    EXPECT_EQ(watched.selected(), "t1 ");
    EXPECT_EQ(resets.count(), 0);

    watched.showByDay(watched.model.listing()->book, {LedgerSort::Key::date, LedgerSort::Direction::ascending});
    EXPECT_TRUE(watched.shown().starts_with("20260901: o1 20261031: i1 20261102: e2 20261105: old t1"))
        << watched.shown();
    watched.show(watched.model.listing()->book);
    EXPECT_EQ(watched.shown(), "new v1 e3 r1 t1 old e2 i1 o1");
}

TEST(LedgerTableModel, TellsWhatEachDayBrought)
{
    WatchedModel watched;
    const auto book = share(sampleLedger().income("i2", "2026-11-02", "Operating bank", "USD", 100'000, "sales"));
    const auto head = [&](std::string_view entry) {
        int row = watched.model.rowOf(entry);
        while (!watched.model.isHeadAt(row))
            --row;
        return row;
    };
    const auto aloud = [&](int row) {
        return watched.model.index(row, 4).data(Qt::AccessibleTextRole).toString().toStdString();
    };
    watched.showByDay(book);
    EXPECT_EQ(
        aloud(head("i2")),
        "Mon 2 November 2026, 3 entries, minus 4,385,200 Indonesian rupiah, plus 1,000.00 US dollar, minus 438.50 "
        "US dollar, net 561.50 US dollar");
    EXPECT_EQ(aloud(head("t1")), "Thu 5 November 2026, 1 entry") << "a transfer brings nothing";
    EXPECT_EQ(watched.model.index(head("t1"), 0).data().toString(), QStringLiteral("Thu 5 November 2026"));
    EXPECT_EQ(watched.model.index(head("t1"), 1).data().toString(), QString{});

    watched.show(book, {.accountIDs = {"Operating bank"}}, {}, LedgerGrouping::byDay);
    const auto balance = watched.model.index(watched.model.rowOf("e1"), LedgerTableModel::balance);
    EXPECT_EQ(balance.data(Qt::AccessibleTextRole).toString(), QStringLiteral("13,061.50 US dollar"));
}

TEST(LedgerTableModel, CopiesRowsForSpreadsheetsAndReadsCellsAloud)
{
    WatchedModel watched;
    const auto rowOf = [&](std::string_view id) { return watched.model.rowOf(id); };
    EXPECT_EQ(watched.model.copyText({rowOf("x1"), rowOf("t1")}).toStdString(),
              "Date\tEntry\tNote\tAccount\tTo account\tRecorded by\tCurrency\tAmount\tCurrency\tAmount\n"
              "2026-11-06\tExchange\t\tSingapore\t\tMira Owner\tUSD\t-12,000.00\tSGD\t16,074.00\n"
              "2026-11-05\tFunding\t\tOperating bank\tRizky float\tMira Owner\tUSD\t50.00\n");
    watched.show(share(sampleLedger()), {.accountIDs = {"Operating bank"}});
    EXPECT_EQ(watched.model.copyText({rowOf("e1")}).toStdString(),
              "Date\tEntry\tNote\tAccount\tTo account\tRecorded by\tCurrency\tAmount\tCurrency\tBalance\n"
              "2026-11-02\tUtilities › Electricity\tĐiện văn phòng\tOperating bank\t\tMira Owner"
              "\tUSD\t-438.50\tUSD\t12,061.50\n");
    watched.show(share(sampleLedger()));
    const auto aloud = [&](std::string_view id, int column) {
        return watched.model.index(rowOf(id), column).data(Qt::AccessibleTextRole).toString().toStdString();
    };
    EXPECT_EQ(aloud("e3", LedgerTableModel::entry), "Expense, Utilities › Electricity, Reversed, 2 receipts");
    EXPECT_EQ(aloud("t1", LedgerTableModel::entry), "Funding");
    EXPECT_EQ(aloud("t1", LedgerTableModel::account), "Operating bank, to Rizky float");
    EXPECT_TRUE(watched.model.repeatsDay(rowOf("e3")));
    EXPECT_FALSE(watched.model.repeatsDay(rowOf("v1")));
}

TEST(LedgerTableModel, HeadsItsColumnsAndNothingElse)
{
    const WatchedModel watched;
    const auto& model = watched.model;
    const int last = model.columnCount() - 1;
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Date"));
    EXPECT_EQ(model.headerData(last, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(),
              Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_FALSE(model.headerData(last + 1, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    EXPECT_FALSE(LedgerTableModel{}.headerData(0, Qt::Horizontal, Qt::DisplayRole).isValid());
}

}
