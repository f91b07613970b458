#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"
#include "LedgerUI/Screens/Receipts/AddReceiptsDialog.h"

class LedgerStore;
class QWidget;
class TransactionForm;
struct LedgerRefund;

/// The dialogs that the ledger page opens over its window. What comes of them is announced; the page shows it.
class LedgerDialogs final : public QObject {
    Q_OBJECT
public:
    LedgerDialogs(LedgerStore& store, QWidget& page);

    void record(const EntryForm::Opening& opening);
    /// An entry that an ended session left without a confirmation comes back before anything else is recorded.
    void offerKeptEntry();
    /// The same entry once more, on the day of today.
    void duplicate(const std::string& entryID);
    /// Keeps the entry as a template.
    void keepTemplate(const std::string& entryID);
    /// The templates, with what is due by them.
    void showTemplates();
    void refund(const LedgerRefund& refund);
    void reverse(const std::string& entryID);
    /// Several, for one reason.
    void reverse(const std::vector<std::string>& entryIDs);
    void exportEntries(LedgerExport::Page page);
    void importEntries();
    void showReceipt(const std::string& entryID, std::size_t at);
    void addReceipts(AddReceiptsDialog::Opening opening);
    /// The digital receipt of an entry, to be given to others.
    void share(const std::string& entryID);

Q_SIGNALS:
    /// Entries that are in the ledger now.
    void recorded(const QString& entryID);
    void reversed(const QString& originalID);
    void imported(const std::vector<std::string>& entryIDs);
    /// Something was done, said in a sentence.
    void done(const QString& text);

private:
    void open(TransactionForm* form);

    LedgerStore& m_store;
    QWidget& m_page;
    bool m_isExportOpening = false; // made, and shown in the next turn
};
