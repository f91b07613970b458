#include "LedgerUI/Presentation/Table/PlainTableModel.h"

#include <algorithm>
#include <random>

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace {

/// What a view knows of the rows that it was told about, and of nothing else.
struct Mirror {
    explicit Mirror(PlainTableModel& watched) : model{watched}
    {
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, [this](const QModelIndex&, int first, int last) {
            rows.erase(rows.begin() + first, rows.begin() + last + 1);
        });
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, [this](const QModelIndex&, int first, int last) {
            for (int row = first; row <= last; ++row)
                rows.insert(rows.begin() + row, read(row));
        });
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex& from, const QModelIndex& to) {
                             for (int row = from.row(); row <= to.row(); ++row)
                                 rows[static_cast<std::size_t>(row)] = read(row);
                         });
        const auto readAll = [this] { rows = all(); };
        QObject::connect(&model, &QAbstractItemModel::modelReset, readAll);
        QObject::connect(&model, &QAbstractItemModel::layoutChanged, readAll);
    }

    [[nodiscard]] std::string read(int row) const
    {
        return std::string{model.idAt(row)} + " " + model.copyText(row).toStdString();
    }
    [[nodiscard]] std::vector<std::string> all() const
    {
        std::vector<std::string> texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts.push_back(read(row));
        return texts;
    }

    PlainTableModel& model;
    std::vector<std::string> rows;
};

std::vector<PlainRow> someRows(std::mt19937& random)
{
    std::vector<PlainRow> rows;
    for (int id = 0; id < 14; ++id) {
        if (random() % 3 == 0)
            continue;
        // Another text now and then for the same identity.
        const auto text = QStringLiteral("row %1, %2").arg(id).arg(random() % 5 == 0 ? random() % 100 : 0);
        rows.push_back({.id = std::to_string(id), .cells = {{.text = text}, {.text = QString::number(id)}}});
    }
    if (random() % 4 == 0)
        std::ranges::shuffle(rows, random);
    return rows;
}

}

TEST(PlainTableModel, TellsItsViewsOfEveryChange)
{
    const std::vector<PlainColumn> columns{{.head = QStringLiteral("Name")}, {.head = QStringLiteral("Number")}};
    std::mt19937 random{20261120};
    PlainTableModel model;
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    const Mirror mirror{model};
    for (int step = 0; step < 400; ++step) {
        const auto rows = someRows(random);
        model.present(columns, rows);
        ASSERT_EQ(mirror.rows, mirror.all()) << "step " << step;
        ASSERT_EQ(model.rowCount(), static_cast<int>(rows.size()));
        for (std::size_t at = 0; at < rows.size(); ++at) {
            ASSERT_EQ(mirror.rows[at], rows[at].id + " " + rows[at].cells[0].text.toStdString() + "\t" + rows[at].id);
            ASSERT_EQ(model.rowOf(rows[at].id), static_cast<int>(at));
        }
        ASSERT_EQ(model.rowOf("none"), -1);
    }
}

TEST(PlainTableModel, ReadsAloudWhatACellSaysInOtherWords)
{
    PlainTableModel model;
    model.present(
        {{.head = QStringLiteral("Name")}, {.head = QStringLiteral("Sum"), .align = PlainColumn::Align::right}},
        {{.id = "a",
          .cells = {{.text = QStringLiteral("–"), .spoken = QStringLiteral("nothing")},
                    {.text = QStringLiteral("12")}}}});
    EXPECT_EQ(model.data(model.index(0, 0), Qt::AccessibleTextRole), QStringLiteral("nothing"));
    EXPECT_EQ(model.data(model.index(0, 1), Qt::AccessibleTextRole), QStringLiteral("12"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::AlignRight);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::AlignLeft);
    EXPECT_FALSE(model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    model.present({{.head = QStringLiteral("Alone")}}, {});
    EXPECT_EQ(model.columnCount(), 1);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Alone"));
}
