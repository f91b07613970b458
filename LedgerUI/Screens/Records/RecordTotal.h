#pragma once

#include <optional>

#include <QWidget>

#include "LedgerUI/Components/Table/Cell.h"
#include "LedgerUI/Presentation/Records/RecordRow.h"
#include "LedgerUI/Screens/Records/RecordInks.h"

class QTableView;

/// How a cell of a table of records is painted. In two lines the second text stands below the first, else beside it.
Cell recordCell(const RecordCell& cell, const RecordColumn& column, const RecordInks& inks, bool hasTwoLines);

/// The sums under a table, each below its column.
class RecordTotal final : public QWidget {
    Q_OBJECT
public:
    explicit RecordTotal(QTableView& table);

    void present(const RecordRows& rows, const RecordInks& inks);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTableView& m_table;
    std::vector<RecordColumn> m_columns;
    std::optional<RecordRow> m_total;
    std::optional<RecordInks> m_inks;
};
