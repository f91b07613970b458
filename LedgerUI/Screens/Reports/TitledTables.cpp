#include "LedgerUI/Screens/Reports/TitledTables.h"

#include <algorithm>
#include <limits>

#include <QVBoxLayout>

#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Theme/Space.h"

TitledTables::TitledTables(QWidget* parent) : QScrollArea{parent}
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* body = new QWidget(this);
    m_rows = new QVBoxLayout(body);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
    m_rows->addStretch(1);
    setWidget(body);
}

ReportTable* TitledTables::addTable(const QString& name)
{
    auto* title = new TextLabel(TypeStep::section, Token::text, widget());
    title->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step2);
    auto* table = new ReportTable(name, RowDelegate::Density::oneLine, widget());
    table->showWhole(std::numeric_limits<int>::max());
    m_rows->insertWidget(m_rows->count() - 1, title);
    m_rows->insertWidget(m_rows->count() - 1, table);
    m_tables.emplace_back(table, title);
    return table;
}

TextLabel* TitledTables::addNote(const QString& name)
{
    auto* note = new TextLabel(TypeStep::small, Token::text2, widget());
    note->setObjectName(name);
    note->setWordWrap(true);
    note->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step4);
    m_rows->insertWidget(m_rows->count() - 1, note);
    return note;
}

void TitledTables::present(ReportTable& table, const ReportGrid& grid, const ChartColors& colors)
{
    const auto found = std::ranges::find(m_tables, &table, &std::pair<ReportTable*, TextLabel*>::first);
    found->second->setText(grid.name);
    found->second->setVisible(!grid.rows.empty());
    table.present(grid, colors);
    table.setVisible(!grid.rows.empty());
}
