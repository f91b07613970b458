#pragma once

#include <vector>

#include <QFrame>

#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

class TextLabel;
class WrapLayout;

/// Below the accounts: what is on all that are shown, one figure per currency, in as many rows as they need.
class AccountTotalsStrip final : public QFrame {
    Q_OBJECT
public:
    explicit AccountTotalsStrip(QWidget* parent = nullptr);

    void present(const std::vector<MoneyText>& totals);
    void retranslate();

private:
    TextLabel* m_hint = nullptr;
    TextLabel* m_label = nullptr;
    QWidget* m_figures = nullptr;
    WrapLayout* m_row = nullptr;
};
