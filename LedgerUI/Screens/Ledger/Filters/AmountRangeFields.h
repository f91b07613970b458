#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"

class FieldError;
class QLineEdit;
class TextLabel;

/// Two fields for the least and the most that an entry moves. What can be read in them takes effect as it is typed.
class AmountRangeFields final : public QWidget {
    Q_OBJECT
public:
    explicit AmountRangeFields(QWidget* parent = nullptr);

    void present(const LedgerFilter::Amounts& amounts);
    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void amountsWanted(const LedgerFilter::Amounts& amounts);

private:
    void take();

    LedgerFilter::Amounts m_amounts;
    TextLabel* m_leastName = nullptr;
    TextLabel* m_mostName = nullptr;
    QLineEdit* m_least = nullptr;
    QLineEdit* m_most = nullptr;
    FieldError* m_error = nullptr;
    TextLabel* m_hint = nullptr;
};
