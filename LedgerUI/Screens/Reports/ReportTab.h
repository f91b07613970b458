#pragma once

#include <functional>
#include <string>

#include <QList>
#include <QWidget>

#include "LedgerUI/Components/Chart/ChartPainter.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportSheet.h"

class ChartView;
class CurrencySegments;
class ReportTable;

/// One tab of the reports page. It shows what the sheet says and asks for another one.
class ReportTab : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    virtual void present(const ReportSheet& sheet, const ChartColors& colors) = 0;
    /// Where the focus goes, pane by pane, in reading order.
    [[nodiscard]] virtual QList<QWidget*> panes() const = 0;
    /// Whether its tables can be saved as files.
    void offerSaving(bool isOffered);

Q_SIGNALS:
    void queryWanted(const ReportQuery& query);
    void backingWanted(const ReportBacking& backing);
    void entryWanted(const QString& id);
    void attentionWanted(const AttentionItem& item);
    void tabWanted(const QString& id);
    void copied();
    void wholeCopyWanted(const QString& tableID);
    void saveWanted(const QString& tableName);

protected:
    /// Hands on what the table asks for.
    void follow(const ReportTable& table);
    /// Opens and copies the figures of a chart, which stand in the table's rows of these identities.
    void follow(const ChartView& chart, ReportTable& table, std::function<std::string(std::size_t slot)> rowOf);
    /// Asks for the currency that is chosen there.
    void follow(const CurrencySegments& currency);
    static void presentCurrencies(CurrencySegments& currency, const ReportSheet& sheet);

    ReportQuery m_query; // of the sheet in sight
};
