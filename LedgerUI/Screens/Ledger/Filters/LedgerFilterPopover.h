#pragma once

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilterChoices.h"

class AmountRangeFields;
class ChoiceList;
class QListWidget;

/// The choices of one part of the filter, or of all parts one beside the other's name. It stays open while they are
/// ticked.
class LedgerFilterPopover final : public Popover {
    Q_OBJECT
public:
    explicit LedgerFilterPopover(QWidget* anchor);

    /// Opens on one part.
    void openOn(const LedgerBookPointer& book, const LedgerFilter& filter, LedgerFilter::Part part);
    /// Opens on all parts, named at the left, with one of them chosen.
    void openOnAll(const LedgerBookPointer& book, const LedgerFilter& filter, LedgerFilter::Part first);

Q_SIGNALS:
    void amountsWanted(const LedgerFilter::Amounts& amounts);
    void choicesWanted(LedgerFilter::Part part, const LedgerFilter::Choices& choices);

private:
    void start(const LedgerBookPointer& book, const LedgerFilter& filter, LedgerFilter::Part part);
    void presentPart(LedgerFilter::Part part);
    [[nodiscard]] int roomBelow() const;

    QWidget* m_below = nullptr; // opens under it
    LedgerBookPointer m_book;
    LedgerFilter m_filter;
    LedgerFilter::Part m_part = LedgerFilter::Part::kinds;
    QListWidget* m_parts = nullptr;
    ChoiceList* m_choices = nullptr;
    AmountRangeFields* m_amounts = nullptr;
};
