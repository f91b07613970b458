#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Print/PrintedPages.h"

/// A digital receipt as it will be given out, on its ground. It stays white in a dark window.
class DigitalReceiptView final : public QWidget {
    Q_OBJECT
public:
    explicit DigitalReceiptView(QWidget* parent = nullptr);

    void present(PrintedPages pages);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QSizeF paperSize() const;

    PrintedPages m_pages;
};
