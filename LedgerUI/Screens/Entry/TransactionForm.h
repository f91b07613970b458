#pragma once

#include <string_view>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Entry/EntryFormContent.h"
#include "LedgerUI/Presentation/Entry/EntryHistory.h"
#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"

struct CategoryForm;
class EntryDayField;
class EntryFormBody;
class ReceiptsPane;

/// Records one entry. Deletes itself when it closes; open it with `open()` over its window.
class TransactionForm final : public CommandForm {
    Q_OBJECT
public:
    TransactionForm(LedgerStore& store, const EntryForm::Opening& opening, QWidget* parent);
    /// On an entry that an earlier form left behind.
    TransactionForm(LedgerStore& store, const KeptEntry& kept, QWidget* parent);

    /// Whether entries of this kind can be recorded here; reversals, capital and dividends have their own places.
    static bool supports(std::string_view kind);
    /// Offers to keep what stands in the form as a template; whoever opens the form answers `templateWanted`.
    void offerTemplate();

Q_SIGNALS:
    /// The entry is recorded and the form about to close. `entryID` is its id in the store's snapshot, empty when the
    /// ledger could not be reloaded.
    void recorded(const QString& entryID);
    /// What stands in the form is to be kept as a template.
    void templateWanted(const TransactionDraft& draft);
    /// Receipts that could not be uploaded, of an entry that is recorded now.
    void receiptsLeft(const QString& entryID, std::size_t uploaded, const std::vector<ReceiptUpload>& failed);

private:
    void present() override;
    void adoptSnapshot() override;
    void adoptLanguage(const std::string& before) override;
    [[nodiscard]] QWidget& firstField() const override;

    TransactionForm(LedgerStore& store, EntrySubmission submission, QWidget* parent);
    void buildBody();
    void bind();
    void bindReceipts();
    void adoptReceipts();
    void offer();
    [[nodiscard]] EntryFormContent content() const;
    void submit();
    void send();
    void keepDraft();
    void forget();
    [[nodiscard]] bool hasChanges() const;
    [[nodiscard]] Note noteOn(const EntryFormContent& shown) const;
    void finish(const Result<std::string>& reply);
    /// Another entry like the one that is recorded now.
    void goOn();
    void pin(const std::string& categoryID, bool isPinned);
    void openCategory(const CategoryForm& form);
    /// Has `change` called with what stands in the form, and what follows from it; both are shown.
    template <class... Values>
    void connectEdit(void (EntryFormBody::*edited)(Values...), auto change);
    void edit(auto change);

    VisibleBooks m_books; // of the snapshot that the form was last offered
    EntryHistory m_history;
    EntrySubmission m_submission;
    TransactionDraft m_initial;
    EntryFormBody* m_body = nullptr;
    EntryDayField* m_day = nullptr;
    ReceiptUploads* m_uploads = nullptr;
    ReceiptsPane* m_receipts = nullptr;
    QPushButton* m_another = nullptr;
    QPushButton* m_template = nullptr;
    QWidget* m_templateRow = nullptr;
    bool m_offersTemplate = false;
    bool m_goesOn = false;            // what is being saved is followed by another entry
    bool m_hasGoneOn = false;         // at least once
    bool m_savesOnceUploaded = false; // the person has pressed Save while receipts were on their way
};
