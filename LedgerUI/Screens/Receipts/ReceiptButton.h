#pragma once

#include "LedgerUI/Components/Buttons/RowButton.h"

/// A receipt in a list: its glyph and its name, elided in the middle, as a button over the whole row.
class ReceiptButton final : public RowButton {
    Q_OBJECT
public:
    explicit ReceiptButton(QWidget* parent = nullptr);

    void present(const QString& name, bool isDocument);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_isDocument = false;
};
