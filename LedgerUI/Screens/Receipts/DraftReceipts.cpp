#include "LedgerUI/Screens/Receipts/DraftReceipts.h"

#include <utility>

#include <QWidget>

#include "LedgerUI/Screens/Receipts/ReceiptInput.h"
#include "LedgerUI/Screens/Receipts/ReceiptsPane.h"

DraftReceipts::DraftReceipts(LedgerStore& store, std::size_t taken, QWidget& form) : QObject{&form}
{
    m_uploads = new ReceiptUploads(store, taken, &form);
    m_pane = new ReceiptsPane(*m_uploads, &form);
    auto* input = new ReceiptInput(form);
    connect(input, &ReceiptInput::given, m_pane, &ReceiptsPane::addFiles);
    connect(m_uploads, &ReceiptUploads::changed, this, &DraftReceipts::changed);
    connect(m_uploads, &ReceiptUploads::rested, this, [this] {
        if (std::exchange(m_isAwaited, false))
            Q_EMIT arrived();
    });
}

bool DraftReceipts::await()
{
    m_isAwaited = m_uploads->isBusy();
    return m_isAwaited;
}
