#pragma once

#include <QAbstractButton>

/// A receipt in a list: its glyph and its name, elided in the middle, as a button over the whole row.
class ReceiptButton final : public QAbstractButton {
    Q_OBJECT
public:
    explicit ReceiptButton(QWidget* parent = nullptr);

    void present(const QString& name, bool isDocument);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    bool m_isDocument = false;
};
