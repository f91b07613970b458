#pragma once

#include <optional>

#include "LedgerCore/Domain/Entries/Drafts/TransactionDraft.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Entry/EntryReversal.h"

class FormField;
class LimitedEdit;
class ReversalRows;
class TextLabel;

/// Undoes one entry, after showing what will be posted. Deletes itself when it closes; open it with `open()`, and only
/// for an entry that LedgerEntryAccess lets the member reverse.
class ReversalDialog final : public CommandForm {
    Q_OBJECT
public:
    ReversalDialog(LedgerStore& store, LedgerTransaction original, QWidget* parent);

Q_SIGNALS:
    /// The reversal is posted; the dialog stays open and offers the correct entry.
    void reversed(const QString& originalID);
    /// The person wants to record the correct entry; the dialog is about to close.
    void correctionRequested(const TransactionDraft& draft);

private:
    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void proceed();
    /// The reversal that is to be sent, unless its reason is missing, which is said then.
    std::optional<Reversal> checked();
    void send(const Reversal& request);
    void finish(const Result<void>& reply);
    void offerCorrection();
    [[nodiscard]] bool mayCorrect() const;

    VisibleBooks m_books; // of the snapshot that the dialog was last offered
    LedgerTransaction m_original;
    ReversalSubmission m_submission;
    TextLabel* m_explanation = nullptr;
    ReversalRows* m_rows = nullptr;
    LimitedEdit* m_reason = nullptr;
    FormField* m_reasonField = nullptr;
};
