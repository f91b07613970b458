#pragma once

#include <string>
#include <vector>

#include <QComboBox>

#include "LedgerUI/Presentation/Forms/AccountChoice.h"

/// The currencies of an account. Closed it shows the code, and the name where that fits whole.
class CurrencyPicker final : public QComboBox {
    Q_OBJECT
public:
    explicit CurrencyPicker(QWidget* parent = nullptr);

    /// `prompt` stands in the closed box while nothing is chosen.
    void present(const std::vector<CurrencyChoice>& rows, const std::string& chosen, const QString& prompt);

Q_SIGNALS:
    void currencyChosen(const std::string& code);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<CurrencyChoice> m_rows;
    QString m_prompt;
};
