#pragma once

#include <array>
#include <vector>

#include <QFrame>
#include <QPointer>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Screens/Ledger/LedgerTotalBlock.h"

class IconButton;
struct LedgerListing;
class TextLabel;

/// Under the table: how many entries are shown and what they bring in each currency; of several that are selected what
/// those bring, and of a single account what it began and ended with. As many currencies as fit, at most four; a panel
/// lists them all.
class LedgerTotalsStrip final : public QFrame {
    Q_OBJECT
public:
    explicit LedgerTotalsStrip(QWidget* parent = nullptr);

    struct Content {
        QString count; // how many entries the figures are about
        std::vector<LedgerTotalFigures> totals;
        QString hint = {}; // what they count
    };
    /// Of several selected entries what they bring; of a single account, narrowed by nothing but that and the period,
    /// what it began and ended with; else what the entries shown bring. `sums` are those of the selected ones.
    static Content contentOf(const LedgerListing& listing, std::size_t selected, const std::vector<LedgerTotal>& sums);
    void present(Content content);
    /// Makes what shows figures, which otherwise waits for the first of them.
    void makeReady();
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

    Content m_content;
    TextLabel* m_count = nullptr;
    QWidget* m_figures = nullptr;
    std::array<LedgerTotalBlock*, 4> m_blocks{};
    IconButton* m_more = nullptr;
    QPointer<Popover> m_panel;
};
