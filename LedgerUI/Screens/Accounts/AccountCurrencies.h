#pragma once

#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Accounts/AccountForm.h"

class QPushButton;
class TextLabel;
class WrapLayout;

/// The currencies of an account as chips: those that were just added can be removed again.
class AccountCurrencies final : public QWidget {
    Q_OBJECT
public:
    explicit AccountCurrencies(QWidget* parent = nullptr);

    void present(const AccountFormContent& content);
    [[nodiscard]] QWidget* firstControl() const;

Q_SIGNALS:
    void added(const std::string& code);
    void removed(const std::string& code);

private:
    void openChoices();
    void fill(const AccountFormContent& content);

    WrapLayout* m_row = nullptr;
    QPushButton* m_add = nullptr;
    std::vector<QWidget*> m_chips;
    std::vector<CurrencyChoice> m_addable;
    QStringList m_shown; // what the chips say
};
