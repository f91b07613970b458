#include "LedgerUI/Presentation/Ledger/LedgerTableModel.h"

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

    void show(const LedgerBookPointer& book, const LedgerFilter& filter = {}, LedgerSort sort = {})
    {
        auto next = std::make_shared<const LedgerListing>(listingOf(book, {filter, sort, sampleToday}));
        const auto change = changeBetween(model.listing().get(), *next);
        model.present(std::move(next), change);
    }
    void select(std::string_view id)
    {
        selection.setCurrentIndex(model.index(model.rowOf(id), 0),
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
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

    EXPECT_EQ(idsOf(*fresh, watched.model.rows()), "new v1 e3 r1 t1 e2 i1 o1 old");
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

TEST(LedgerTableModel, CopiesRowsForSpreadsheetsAndReadsCellsAloud)
{
    WatchedModel watched;
    const auto rowOf = [&](std::string_view id) { return watched.model.rowOf(id); };
    EXPECT_EQ(watched.model.copyText({rowOf("x1"), rowOf("t1")}).toStdString(),
              "Date\tEntry\tNote\tAccount\tTo account\tRecorded by\tCurrency\tAmount\tCurrency\tAmount\n"
              "2026-11-06\tExchange\t\tSingapore\t\tMira Owner\tUSD\t-12,000.00\tSGD\t16,074.00\n"
              "2026-11-05\tFunding\t\tOperating bank\tRizky float\tMira Owner\tUSD\t50.00\n");
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
