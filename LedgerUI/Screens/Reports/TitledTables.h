#pragma once

#include <utility>
#include <vector>

#include <QScrollArea>

class QVBoxLayout;
class ReportTable;
class TextLabel;
struct ChartColors;
struct ReportGrid;

/// Tables of a report one below the other, each whole under its title; they scroll together.
class TitledTables final : public QScrollArea {
    Q_OBJECT
public:
    explicit TitledTables(QWidget* parent);

    /// A table of this name below those that are there.
    ReportTable* addTable(const QString& name);
    /// A line of text below them.
    TextLabel* addNote(const QString& name);
    /// Shows a table with its title, or neither where there are no rows.
    void present(ReportTable& table, const ReportGrid& grid, const ChartColors& colors);

private:
    QVBoxLayout* m_rows = nullptr;
    std::vector<std::pair<ReportTable*, TextLabel*>> m_tables;
};
