#include "LedgerUI/Screens/Reports/TitledTablesTab.h"

#include <utility>

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Screens/Reports/CurrencySegments.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Screens/Reports/TitledTables.h"
#include "LedgerUI/Theme/Space.h"

TitledTablesTab::TitledTablesTab(const QString& name, const QString& currencyName, QWidget* parent) : ReportTab{parent}
{
    setObjectName(name);
    auto* strip = new QWidget(this);
    strip->setFixedHeight(Space::filterRow);
    m_currency = new CurrencySegments(currencyName, strip);
    m_strip = new QHBoxLayout(strip);
    m_strip->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    m_strip->addWidget(m_currency);
    m_strip->addStretch(1);
    m_body = new TitledTables(this);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(strip);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(m_body, 1);
    follow(*m_currency);
}

void TitledTablesTab::addToStrip(QWidget* part)
{
    m_strip->addWidget(part);
}

ReportTable* TitledTablesTab::addTable(const QString& name, std::function<const ReportGrid&(const ReportSheet&)> grid)
{
    auto* table = m_body->addTable(name);
    follow(*table);
    m_tables.push_back({table, std::move(grid)});
    return table;
}

TextLabel* TitledTablesTab::addNote(const QString& name)
{
    return m_body->addNote(name);
}

void TitledTablesTab::present(const ReportSheet& sheet, const ChartColors& colors)
{
    m_query = sheet.query;
    presentCurrencies(*m_currency, sheet);
    for (const auto& each : m_tables)
        m_body->present(*each.table, each.grid(sheet), colors);
    presentBeside(sheet);
}

QList<QWidget*> TitledTablesTab::panes() const
{
    QList<QWidget*> all{m_currency};
    for (const auto& each : m_tables) {
        if (!each.table->isHidden())
            all.append(each.table);
    }
    return all;
}
