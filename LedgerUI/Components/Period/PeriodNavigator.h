#pragma once

#include <chrono>
#include <optional>

#include <QWidget>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

class PeriodPopover;
class QToolButton;

/// Three joined buttons: the previous period, the chosen one with its popover, and the next.
class PeriodNavigator final : public QWidget {
    Q_OBJECT
public:
    explicit PeriodNavigator(QWidget* parent = nullptr);

    void present(const Period& period, PeriodCounts counts, std::chrono::year_month_day today);

    // What the keys do; each does nothing where its button is disabled.
    void goBack();
    void goForward();
    void openPopover();

Q_SIGNALS:
    void periodChosen(const Period& period);

protected:
    void changeEvent(QEvent* event) override;

private:
    void presentTexts();
    /// The next period, unless it lies past all that can be looked at.
    [[nodiscard]] std::optional<Period> nextInReach() const;

    Period m_period = Period::allTime();
    PeriodCounts m_counts;
    std::chrono::year_month_day m_today{};
    QToolButton* m_previous = nullptr;
    class PeriodButton* m_label = nullptr;
    QToolButton* m_next = nullptr;
    PeriodPopover* m_popover = nullptr;
};
