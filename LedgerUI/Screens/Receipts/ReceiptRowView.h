#pragma once

#include <QFrame>

#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"

class IconButton;
class ReceiptButton;
class TextLabel;

/// One receipt of a draft: its name, how far it is, and buttons to try it again and to take it away.
class ReceiptRowView final : public QFrame {
    Q_OBJECT
public:
    explicit ReceiptRowView(QWidget* parent = nullptr);

    void present(const ReceiptRow& row, bool isChosen, bool isLocked);
    void focusName();

Q_SIGNALS:
    void chosen();
    void retryWanted();
    void removalWanted();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ReceiptButton* m_name = nullptr;
    TextLabel* m_state = nullptr;
    TextLabel* m_message = nullptr;
    IconButton* m_retry = nullptr;
    IconButton* m_remove = nullptr;
    bool m_isChosen = false;
};
