#pragma once

#include <string>
#include <vector>

#include <QComboBox>

#include "LedgerUI/Presentation/Entry/EntryFormContent.h"

/// The currencies of an account. Closed it shows the code, and the name where that fits whole.
class CurrencyPicker final : public QComboBox {
    Q_OBJECT
public:
    explicit CurrencyPicker(QWidget* parent = nullptr);

    void present(const std::vector<EntryCurrencyRow>& rows, const std::string& chosen);

Q_SIGNALS:
    void currencyChosen(const std::string& code);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<EntryCurrencyRow> m_rows;
};
