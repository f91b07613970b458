#include "LedgerUI/Screens/Reports/MatrixTab.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Reports/ReportWords.h"
#include "LedgerUI/Screens/Reports/CurrencySegments.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Screens/Reports/TitledTables.h"
#include "LedgerUI/Theme/Space.h"

MatrixTab::MatrixTab(QWidget* parent) : ReportTab{parent}
{
    setObjectName(QStringLiteral("matrixTab"));
    auto* strip = new QWidget(this);
    strip->setFixedHeight(Space::filterRow);
    m_currency = new CurrencySegments(QStringLiteral("matrixCurrency"), strip);
    m_hides = new QCheckBox(strip);
    m_hides->setObjectName(QStringLiteral("matrixHides"));
    auto* stripRow = new QHBoxLayout(strip);
    stripRow->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    stripRow->addWidget(m_currency);
    stripRow->addStretch(1);
    stripRow->addWidget(m_hides);

    m_tables = new TitledTables(this);
    m_movements = m_tables->addTable(QStringLiteral("movementTable"));
    m_monthEnds = m_tables->addTable(QStringLiteral("monthEndTable"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(strip);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(m_tables, 1);
    bindParts();
}

void MatrixTab::bindParts()
{
    for (auto* table : {m_movements, m_monthEnds}) {
        connect(table, &ReportTable::backingWanted, this, &ReportTab::backingWanted);
        connect(table, &ReportTable::copied, this, &ReportTab::copied);
    }
    connect(m_currency, &CurrencySegments::currencyChosen, this, [this](const QString& code) {
        auto query = m_query;
        query.currency = code.toStdString();
        Q_EMIT queryWanted(query);
    });
    connect(m_hides, &QCheckBox::clicked, this, [this](bool isOn) {
        auto query = m_query;
        query.hidesStillColumns = isOn;
        Q_EMIT queryWanted(query);
    });
}

void MatrixTab::present(const ReportSheet& sheet, const ChartColors& colors)
{
    m_query = sheet.query;
    std::vector<std::string> codes;
    for (const auto& each : sheet.overview.currencies)
        codes.push_back(each.currency);
    m_currency->present(std::move(codes), m_query.currency);
    m_hides->setText(word(reportWords(), "matrix.hides"));
    m_hides->setChecked(m_query.hidesStillColumns);
    m_tables->present(*m_movements, sheet.matrix.movements, colors);
    m_tables->present(*m_monthEnds, sheet.matrix.monthEnds, colors);
}

QList<QWidget*> MatrixTab::panes() const
{
    QList<QWidget*> all{m_currency};
    for (auto* table : {m_movements, m_monthEnds}) {
        if (!table->isHidden())
            all.append(table);
    }
    return all;
}
