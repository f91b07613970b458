#include "LedgerUI/Screens/Reports/FundsTab.h"

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"

FundsTab::FundsTab(QWidget* parent)
    : TitledTablesTab{QStringLiteral("movementsTab"), QStringLiteral("fundsCurrency"), parent}
{
    addTable(QStringLiteral("fundSumTable"), [](const auto& sheet) -> const ReportGrid& { return sheet.funds.sums; });
    auto* list =
        addTable(QStringLiteral("fundTable"), [](const auto& sheet) -> const ReportGrid& { return sheet.funds.list; });
    list->haveEntries();
    m_note = addNote(QStringLiteral("fundNote"));
    connect(list, &ReportTable::rowOpened, this,
            [this](const QString& id) { Q_EMIT entryWanted(qString(FundMovementGrids::entryOf(id.toStdString()))); });
}

void FundsTab::presentBeside(const ReportSheet& sheet)
{
    const auto& funds = sheet.funds;
    const auto shown = funds.list.rows.size();
    const auto& locale = InterfaceLanguage::tag();
    if (funds.count == 0)
        m_note->setText(word(reportWords(), "funds.none"));
    else
        m_note->setText(word(reportWords(), funds.list.sort ? "funds.first" : "funds.latest",
                             {groupedNumber(shown, locale), groupedNumber(funds.count, locale)}));
    m_note->setVisible(funds.count == 0 || funds.count > shown);
}
