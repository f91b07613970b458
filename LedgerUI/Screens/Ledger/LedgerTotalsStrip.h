#pragma once

#include <array>
#include <vector>

#include <QFrame>
#include <QPointer>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Screens/Ledger/LedgerTotalBlock.h"

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
    using Detail = LedgerTotalBlock::Detail;

    void presentFigures();
    /// How many of the totals have room, in their order: at least one where there is any.
    std::size_t presentBlocks(Detail detail);
    void openAll();
    [[nodiscard]] QWidget* table() const;

    std::size_t m_entries = 0;
    std::size_t m_all = 0;
    std::vector<LedgerTotal> m_totals;
    TextLabel* m_count = nullptr;
    QWidget* m_figures = nullptr;
    std::array<LedgerTotalBlock*, 4> m_blocks{};
    IconButton* m_more = nullptr;
    QPointer<Popover> m_panel;
};
