#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Ledger/LedgerNotice.h"

class EmptyState;
class QPushButton;

/// What stands in the table's place while nothing is shown.
class LedgerNoticeView final : public QWidget {
    Q_OBJECT
public:
    explicit LedgerNoticeView(QWidget* parent = nullptr);

    void present(const LedgerNotice& notice);
    /// While a large ledger is being made ready.
    void presentWaiting(const QString& text);
    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void recordWanted();
    void openingWanted();
    void filterWanted(const LedgerFilter& filter);

private:
    /// Makes `button` the one that carries out the offer.
    QPushButton* buttonFor(const LedgerNotice::Offer& offer, QPushButton* button);
    void replace(EmptyState* state);

    EmptyState* m_state = nullptr;
};
