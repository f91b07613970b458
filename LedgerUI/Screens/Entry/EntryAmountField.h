#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Entry/EntryFormContent.h"

class AmountEdit;
class CurrencyPicker;
class FieldError;
class QPushButton;
class TextLabel;

/// Currency and amount in one row, with what is wrong and the balance that saving leads to below it.
class EntryAmountField final : public QWidget {
    Q_OBJECT
public:
    /// `name` begins the object names of its controls: "entry" gives "entryCurrency" and "entryAmount".
    explicit EntryAmountField(const QString& name, QWidget* parent = nullptr);

    enum class Balance { shown, hidden };
    void present(const EntryMoneyContent& content, Balance balance);

    [[nodiscard]] CurrencyPicker& currency() const { return *m_currency; }
    [[nodiscard]] AmountEdit& amount() const { return *m_amount; }
    /// Unfolds what is known of the entry that this one seems to repeat.
    [[nodiscard]] QPushButton& look() const { return *m_look; }
    [[nodiscard]] FieldError& error() const { return *m_error; }

private:
    void presentEarlier(const QString& facts);

    TextLabel* m_label = nullptr;
    CurrencyPicker* m_currency = nullptr;
    AmountEdit* m_amount = nullptr;
    FieldError* m_error = nullptr;
    TextLabel* m_result = nullptr;
    TextLabel* m_notice = nullptr;
    TextLabel* m_caution = nullptr;
    QPushButton* m_look = nullptr;
    TextLabel* m_earlier = nullptr;
    TextLabel* m_balanceLabel = nullptr;
    TextLabel* m_balance = nullptr;
};
