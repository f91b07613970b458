#pragma once

#include <vector>

#include <QFrame>
#include <QPointer>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"

class IconButton;
class TextLabel;

/// Under the table: how many entries are shown and what they bring in each currency. As many currencies as fit, at
/// most four; a panel lists them all.
class LedgerTotalsStrip final : public QFrame {
    Q_OBJECT
public:
    explicit LedgerTotalsStrip(QWidget* parent = nullptr);

    /// `entries` are shown `ofAll` that there are.
    void present(std::size_t entries, std::size_t ofAll, std::vector<LedgerTotal> totals);
    void retranslate();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Detail { inOutAndNet, netAlone };

    void presentFigures();
    /// At least one, in the order of the totals.
    std::vector<QWidget*> blocksThatFit(Detail detail);
    void openAll();
    [[nodiscard]] QWidget* table() const;

    std::size_t m_entries = 0;
    std::size_t m_all = 0;
    std::vector<LedgerTotal> m_totals;
    TextLabel* m_count = nullptr;
    QWidget* m_figures = nullptr;
    IconButton* m_more = nullptr;
    QPointer<Popover> m_panel;
};
