#pragma once

#include <chrono>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

class FieldError;
class IconButton;
class PeriodGridView;
class QDateEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class TextLabel;

/// Chooses a period: what kind at the left, which one at the right.
class PeriodPopover final : public Popover {
    Q_OBJECT
public:
    explicit PeriodPopover(QWidget* anchor);

    void openOn(const Period& period, const PeriodCounts& counts, std::chrono::year_month_day today);
    void retranslate();

Q_SIGNALS:
    void periodChosen(const Period& period);

private:
    QWidget* buildGridPage();
    QWidget* buildAllTimePage();
    QWidget* buildDatesPage();
    void presentSpan(Period::Span span);
    void presentGrid();
    void turnPage(int by);
    void chooseDates();
    void choose(const Period& period);

    Period m_period = Period::allTime();
    PeriodCounts m_counts;
    std::chrono::year_month_day m_today{};
    std::chrono::year_month_day m_anchor{}; // a day of the page that the grid shows
    Period::Span m_span = Period::Span::month;
    QListWidget* m_spans = nullptr;
    QStackedWidget* m_pages = nullptr;
    IconButton* m_earlier = nullptr;
    IconButton* m_later = nullptr;
    TextLabel* m_title = nullptr;
    TextLabel* m_countHint = nullptr;
    QPushButton* m_this = nullptr;
    PeriodGridView* m_grid = nullptr;
    TextLabel* m_allText = nullptr;
    TextLabel* m_allHint = nullptr;
    QPushButton* m_showAll = nullptr;
    TextLabel* m_fromLabel = nullptr;
    TextLabel* m_toLabel = nullptr;
    QDateEdit* m_from = nullptr;
    QDateEdit* m_to = nullptr;
    FieldError* m_datesError = nullptr;
    QPushButton* m_apply = nullptr;
};
