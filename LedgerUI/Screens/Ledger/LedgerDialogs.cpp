#include "LedgerUI/Screens/Ledger/LedgerDialogs.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/Drafts/TransactionDraft.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"
#include "LedgerUI/Presentation/Templates/TemplateDrafts.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/BatchReversalDialog.h"
#include "LedgerUI/Screens/Entry/ReversalDialog.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Exports/LedgerExportDialog.h"
#include "LedgerUI/Screens/Exports/ReceiptShareDialog.h"
#include "LedgerUI/Screens/Imports/ImportDialog.h"
#include "LedgerUI/Screens/Receipts/ReceiptPreviewDialog.h"
#include "LedgerUI/Screens/Templates/TemplateFormDialog.h"
#include "LedgerUI/Screens/Templates/TemplatesDialog.h"

namespace {

/// Looked up in the snapshot itself: a large ledger that has just come is not ready to be searched yet.
const LedgerTransaction* entryOf(const SnapshotPointer& snapshot, const std::string& id)
{
    return snapshot ? snapshot->entry(id) : nullptr;
}

}

LedgerDialogs::LedgerDialogs(LedgerStore& store, QWidget& page) : QObject{&page}, m_store{store}, m_page{page} {}

void LedgerDialogs::record(const EntryForm::Opening& opening)
{
    open(new TransactionForm(m_store, opening, m_page.window()));
}

void LedgerDialogs::offerKeptEntry()
{
    if (auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        connect(modal, &QDialog::finished, this, &LedgerDialogs::offerKeptEntry, Qt::QueuedConnection);
        return;
    }
    if (const auto kept = m_store.keptEntry())
        open(new TransactionForm(m_store, *kept, m_page.window()));
}

void LedgerDialogs::open(TransactionForm* form)
{
    TemplateFormDialog::offerIn(*form, m_store);
    connect(form, &TransactionForm::recorded, this, [this](const QString& id) {
        Q_EMIT recorded(id);
        Q_EMIT done(word(ledgerWords(), "done.recorded"));
    });
    form->offerBegun();
    connect(form, &TransactionForm::continueWanted, this, &LedgerDialogs::record);
    form->open();
}

void LedgerDialogs::duplicate(const std::string& entryID)
{
    const auto snapshot = m_store.snapshot();
    const auto* entry = entryOf(snapshot, entryID);
    if (!entry)
        return;
    auto draft = EntryEdits::correctionOf(*entry, InterfaceLanguage::tag());
    draft.date.clear();
    record({.kind = draft.kind, .accountID = {}, .prefilled = std::move(draft)});
}

void LedgerDialogs::keepTemplate(const std::string& entryID)
{
    const auto snapshot = m_store.snapshot();
    const auto* entry = entryOf(snapshot, entryID);
    if (!entry)
        return;
    const auto& locale = InterfaceLanguage::tag();
    if (const auto kept = TemplateDrafts::entryOf(EntryEdits::correctionOf(*entry, locale), locale))
        TemplateFormDialog::openOn(m_store, *kept, entry->date, m_page.window());
}

void LedgerDialogs::showTemplates()
{
    (new TemplatesDialog(
         m_store, [this](const EntryForm::Opening& opening) { record(opening); }, m_page.window()))
        ->open();
}

void LedgerDialogs::refund(const LedgerRefund& refund)
{
    record({.kind = std::string{EntryKind::refund},
            .accountID = {},
            .prefilled = EntryEdits::refunding(refund, InterfaceLanguage::tag())});
}

void LedgerDialogs::reverse(const std::string& entryID)
{
    const auto snapshot = m_store.snapshot();
    const auto* entry = entryOf(snapshot, entryID);
    if (!entry)
        return;
    auto* dialog = new ReversalDialog(m_store, *entry, m_page.window());
    connect(dialog, &ReversalDialog::correctionRequested, this, [this](const TransactionDraft& draft) {
        record({.kind = draft.kind, .accountID = {}, .prefilled = draft});
    });
    connect(dialog, &ReversalDialog::reversed, this, [this](const QString& original) {
        Q_EMIT reversed(original);
        Q_EMIT done(word(ledgerWords(), "done.reversed"));
    });
    dialog->open();
}

void LedgerDialogs::reverse(const std::vector<std::string>& entryIDs)
{
    auto* dialog = new BatchReversalDialog(m_store, entryIDs, m_page.window());
    connect(dialog, &BatchReversalDialog::reversed, this, [this](std::size_t count) {
        Q_EMIT done(countedIn(InterfaceLanguage::tag(), entryFormWords(), "batch.result", count));
    });
    dialog->open();
}

/// Made in one turn and opened in the next: both together would hold the window for longer than a picture takes.
void LedgerDialogs::exportEntries(LedgerExport::Page page)
{
    if (std::exchange(m_isExportOpening, true))
        return;
    auto* dialog = new LedgerExportDialog(m_store, std::move(page), m_page.window());
    connect(dialog, &LedgerExportDialog::saved, this,
            [this](const QString& fileName) { Q_EMIT done(word(exportWords(), "done", {fileName.toStdString()})); });
    QTimer::singleShot(std::chrono::milliseconds{1}, this, [this, made = QPointer{dialog}] {
        m_isExportOpening = false;
        if (made && m_store.snapshot())
            made->open();
    });
}

void LedgerDialogs::importEntries()
{
    auto* dialog = new ImportDialog(m_store, m_page.window());
    connect(dialog, &ImportDialog::imported, this, [this](const std::vector<std::string>& ids) {
        Q_EMIT imported(ids);
        Q_EMIT done(countedIn(InterfaceLanguage::tag(), importWords(), "done", ids.size()));
    });
    dialog->open();
}

void LedgerDialogs::showReceipt(const std::string& entryID, std::size_t at)
{
    const auto snapshot = m_store.snapshot();
    const auto* entry = entryOf(snapshot, entryID);
    if (!entry)
        return;
    std::vector<Attachment> receipts;
    for (const auto& id : entry->attachmentIDs) {
        if (const auto* known = m_store.attachment(id))
            receipts.push_back(*known);
    }
    if (at < receipts.size())
        (new ReceiptPreviewDialog(m_store, std::move(receipts), at, m_page.window()))->open();
}

void LedgerDialogs::addReceipts(AddReceiptsDialog::Opening opening)
{
    if (!entryOf(m_store.snapshot(), opening.entryID))
        return;
    auto* dialog = new AddReceiptsDialog(m_store, std::move(opening), m_page.window());
    connect(dialog, &AddReceiptsDialog::added, this, [this] { Q_EMIT done(word(receiptWords(), "add.done")); });
    dialog->open();
}

void LedgerDialogs::share(const std::string& entryID)
{
    const auto snapshot = m_store.snapshot();
    if (entryOf(snapshot, entryID))
        (new ReceiptShareDialog(m_store, entryID, m_page.window()))->open();
}
