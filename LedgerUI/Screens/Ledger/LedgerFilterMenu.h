#pragma once

#include <QMenu>

#include "LedgerUI/Presentation/Ledger/LedgerFilterChoices.h"

/// The choices of one part of the filter, "all" on top. It stays open while choices are ticked.
class LedgerFilterMenu final : public QMenu {
    Q_OBJECT
public:
    LedgerFilterMenu(LedgerFilter::Part part, QWidget* parent);

    void present(const LedgerBook& book, const LedgerFilter& filter);
    [[nodiscard]] LedgerFilter::Part part() const { return m_part; }

Q_SIGNALS:
    void choicesChanged(LedgerFilter::Part part, const LedgerFilter::Choices& choices);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool toggle(QAction* action);

    LedgerFilter::Part m_part;
    LedgerFilter::Choices m_choices;
    QAction* m_all = nullptr;
};
