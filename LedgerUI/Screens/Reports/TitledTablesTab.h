#pragma once

#include <functional>
#include <vector>

#include "LedgerUI/Screens/Reports/ReportTab.h"

class QHBoxLayout;
class TextLabel;
class TitledTables;

/// A tab of tables one below the other, about the currency that is chosen in a strip above them.
class TitledTablesTab : public ReportTab {
    Q_OBJECT
public:
    void present(const ReportSheet& sheet, const ChartColors& colors) final;
    [[nodiscard]] QList<QWidget*> panes() const final;

protected:
    TitledTablesTab(const QString& name, const QString& currencyName, QWidget* parent);

    /// At the right end of the strip.
    void addToStrip(QWidget* part);
    /// A table of this name that shows one of the sheet's grids.
    ReportTable* addTable(const QString& name, std::function<const ReportGrid&(const ReportSheet&)> grid);
    TextLabel* addNote(const QString& name);

    /// Whatever stands beside the tables.
    virtual void presentBeside(const ReportSheet& sheet) = 0;

private:
    struct Table {
        ReportTable* table = nullptr;
        std::function<const ReportGrid&(const ReportSheet&)> grid;
    };

    CurrencySegments* m_currency = nullptr;
    QHBoxLayout* m_strip = nullptr;
    TitledTables* m_body = nullptr;
    std::vector<Table> m_tables;
};
