#pragma once

#include <QObject>

#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"

class QWidget;
class ReceiptsPane;

/// The receipts of a form: chosen in their pane, dropped or pasted anywhere in the form, uploaded at once. A form that
/// is sent while some are on their way waits for them.
class DraftReceipts final : public QObject {
    Q_OBJECT
public:
    /// Lives with `form`, which gives the pane its place; `taken` receipts are on the entry already.
    DraftReceipts(LedgerStore& store, std::size_t taken, QWidget& form);

    [[nodiscard]] ReceiptUploads& uploads() const { return *m_uploads; }
    [[nodiscard]] ReceiptsPane& pane() const { return *m_pane; }

    /// Whether the form has to wait; `arrived` then tells it to go on.
    bool await();
    /// Who goes on writing is not done yet.
    void callOff() { m_isAwaited = false; }
    [[nodiscard]] bool isAwaited() const { return m_isAwaited; }

Q_SIGNALS:
    void changed();
    /// The last of those that were awaited has arrived or failed.
    void arrived();

private:
    ReceiptUploads* m_uploads = nullptr;
    ReceiptsPane* m_pane = nullptr;
    bool m_isAwaited = false;
};
