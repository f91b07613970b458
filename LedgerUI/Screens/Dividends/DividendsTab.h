#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Dividends/DividendBoard.h"

class EmptyState;
class QSplitter;
class RecordEquation;
class RecordHead;
class RecordTable;
class TextLabel;
struct RecordInks;

/// The allocations of dividends and the advances: the chosen one with its lines, and how one participant of it stands.
class DividendsTab final : public QWidget {
    Q_OBJECT
public:
    explicit DividendsTab(QWidget* parent = nullptr);

    void present(const DividendBoard& board, const RecordInks& inks);
    [[nodiscard]] RecordHead& batchHead() const { return *m_batchHead; }
    [[nodiscard]] RecordHead& personHead() const { return *m_personHead; }
    [[nodiscard]] RecordHead& movementHead() const { return *m_movementHead; }
    /// The movement chosen in the settlement; empty for none.
    [[nodiscard]] std::string chosenMovement() const;
    /// The entry in the ledger that it leads to.
    [[nodiscard]] RecordEntry chosenEntry() const;
    bool chooseMovement(const std::string& id);
    [[nodiscard]] QList<QWidget*> panes() const;

Q_SIGNALS:
    void choiceWanted(const DividendChoice& choice);
    void movementChosen();
    /// A movement was opened: the entry that booked its money is wanted.
    void movementOpened();

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    QWidget* buildSettlement();
    void bind();
    void retranslate();

    DividendChoice m_choice;
    bool m_isPresenting = false;
    RecordTable* m_batches = nullptr;
    TextLabel* m_hint = nullptr;
    RecordHead* m_batchHead = nullptr;
    RecordTable* m_lines = nullptr;
    QWidget* m_settlement = nullptr;
    RecordHead* m_personHead = nullptr;
    RecordEquation* m_equation = nullptr;
    RecordHead* m_movementHead = nullptr;
    RecordTable* m_movements = nullptr;
    TextLabel* m_noMovements = nullptr;
    TextLabel* m_notes = nullptr;
    EmptyState* m_none = nullptr;
};
