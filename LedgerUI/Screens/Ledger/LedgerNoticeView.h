#pragma once

#include "LedgerUI/Components/Table/NoticeView.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerNotice.h"

class QPushButton;

/// What stands in the table's place while nothing is shown.
class LedgerNoticeView final : public NoticeView {
    Q_OBJECT
public:
    explicit LedgerNoticeView(QWidget* parent = nullptr);

    void present(const LedgerNotice& notice);

Q_SIGNALS:
    void recordWanted();
    void openingWanted();
    void setUpWanted();
    void filterWanted(const LedgerFilter& filter);

private:
    /// Makes `button` the one that carries out the offer.
    QPushButton* buttonFor(const LedgerNotice::Offer& offer, QPushButton* button);
};
