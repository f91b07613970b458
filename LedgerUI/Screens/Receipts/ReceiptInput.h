#pragma once

#include <vector>

#include <QObject>

#include "LedgerUI/Presentation/Receipts/ReceiptSource.h"

class QMimeData;
class QWidget;

/// Receipts that are dropped anywhere on an area or pasted in it, also where a field would take them as text.
class ReceiptInput final : public QObject {
    Q_OBJECT
public:
    /// Lives with `area`.
    explicit ReceiptInput(QWidget& area);

    void setOpen(bool isOpen) { m_isOpen = isOpen; }

    /// The files of this computer, else the picture, that the data holds.
    static std::vector<ReceiptSource> sourcesOf(const QMimeData& data);

Q_SIGNALS:
    void given(const std::vector<ReceiptSource>& sources);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool takeDrop(QEvent& event);
    bool takePaste(QObject& watched, QEvent& event);

    QWidget& m_area;
    bool m_isOpen = true;
};
