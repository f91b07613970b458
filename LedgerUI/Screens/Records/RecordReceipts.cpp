#include "LedgerUI/Screens/Records/RecordReceipts.h"

#include <utility>

#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"
#include "LedgerUI/Screens/Receipts/ReceiptInput.h"
#include "LedgerUI/Screens/Receipts/ReceiptsPane.h"

RecordReceipts::RecordReceipts(LedgerStore& store, QWidget& form, const std::vector<std::string>& uploaded)
    : QObject{&form}, m_uploads{new ReceiptUploads(store, 0, this)}, m_pane{new ReceiptsPane(*m_uploads, &form)}
{
    m_uploads->adopt(uploaded);
    auto* input = new ReceiptInput(form);
    connect(input, &ReceiptInput::given, m_pane, &ReceiptsPane::addFiles);
    connect(m_uploads, &ReceiptUploads::changed, this, &RecordReceipts::changed);
    connect(m_uploads, &ReceiptUploads::rested, this, [this] {
        if (std::exchange(m_isWaited, false))
            Q_EMIT rested();
    });
}

QWidget* RecordReceipts::pane() const
{
    return m_pane;
}

std::vector<std::string> RecordReceipts::attachmentIDs() const
{
    return m_uploads->attachmentIDs();
}

bool RecordReceipts::holdsMoreThan(const std::vector<std::string>& attachmentIDs) const
{
    return m_uploads->all().size() > attachmentIDs.size();
}

void RecordReceipts::setLocked(bool isLocked)
{
    m_pane->setLocked(isLocked);
}

bool RecordReceipts::holdsBack()
{
    m_isWaited = m_uploads->isBusy();
    return m_isWaited;
}

std::vector<ReceiptUpload> RecordReceipts::failed() const
{
    return m_uploads->failed();
}
