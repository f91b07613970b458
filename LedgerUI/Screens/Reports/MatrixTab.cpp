#include "LedgerUI/Screens/Reports/MatrixTab.h"

#include <QCheckBox>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"

MatrixTab::MatrixTab(QWidget* parent)
    : TitledTablesTab{QStringLiteral("matrixTab"), QStringLiteral("matrixCurrency"), parent}
{
    m_hides = new QCheckBox(this);
    m_hides->setObjectName(QStringLiteral("matrixHides"));
    addToStrip(m_hides);
    addTable(QStringLiteral("movementTable"),
             [](const auto& sheet) -> const ReportGrid& { return sheet.matrix.movements; });
    addTable(QStringLiteral("monthEndTable"),
             [](const auto& sheet) -> const ReportGrid& { return sheet.matrix.monthEnds; });
    connect(m_hides, &QCheckBox::clicked, this, [this](bool isOn) {
        auto query = m_query;
        query.hidesStillColumns = isOn;
        Q_EMIT queryWanted(query);
    });
}

void MatrixTab::presentBeside(const ReportSheet& sheet)
{
    m_hides->setText(word(reportWords(), "matrix.hides"));
    m_hides->setChecked(sheet.query.hidesStillColumns);
}
