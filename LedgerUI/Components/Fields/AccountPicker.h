#pragma once

#include <string>
#include <vector>

#include <QComboBox>

#include "LedgerUI/Presentation/Forms/AccountChoice.h"

/// Chooses an account: each on two lines, with what it holds in all its currencies, grouped by whose it is.
class AccountPicker final : public QComboBox {
    Q_OBJECT
public:
    explicit AccountPicker(QWidget* parent = nullptr);

    /// Without a chosen account `prompt` stands in the closed box.
    void present(const std::vector<AccountChoice>& rows, const std::string& chosen, const QString& prompt);

Q_SIGNALS:
    void accountChosen(const std::string& id);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fill();
    void addChoice(const AccountChoice& choice);

    std::vector<AccountChoice> m_rows;
    QString m_prompt;
};
