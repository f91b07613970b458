#pragma once

#include <string>

#include <QLineEdit>

#include "LedgerUI/Presentation/Entry/EntryAmountText.h"

/// A large field for an amount in one currency: groups digits as they are typed, takes either language's form when
/// pasted, and writes the amount out when it is left. The key beside 0 on the number pad is the decimal separator.
class AmountEdit final : public QLineEdit {
    Q_OBJECT
public:
    explicit AmountEdit(QWidget* parent = nullptr);

    void setCurrency(const std::string& currency) { m_currency = currency; }
    /// Shows another text than the one that stands there; the caret goes to its end.
    void setAmount(const QString& text);

Q_SIGNALS:
    void amountEdited(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void take(const QString& after);
    void show(const AmountText& amount);

    std::string m_currency;
    AmountText m_amount;
};
