#pragma once

#include "LedgerCore/Domain/Entries/TransactionDraft.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/Presentation/Entry/EntryReversal.h"

class FormField;
class LedgerStore;
class QLineEdit;
class ReversalRows;
class TextLabel;

/// Undoes one entry, after showing what will be posted. Deletes itself when it closes; open it with `open()`, and only
/// for an entry that LedgerEntryAccess lets the member reverse.
class ReversalDialog final : public FormDialog {
    Q_OBJECT
public:
    ReversalDialog(LedgerStore& store, LedgerTransaction original, QWidget* parent);

Q_SIGNALS:
    /// The reversal is posted; the dialog stays open and offers the correct entry.
    void reversed(const QString& originalID);
    /// The person wants to record the correct entry; the dialog is about to close.
    void correctionRequested(const TransactionDraft& draft);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildBody();
    void present();
    void presentBanner();
    void presentLeaving();
    void proceed();
    void send(ReversalSending sending);
    void finish(const Result<void>& reply);
    void offerCorrection();
    [[nodiscard]] bool mayCorrect() const;

    LedgerStore& m_store;
    LedgerTransaction m_original;
    SnapshotPointer m_snapshot;
    ReversalState m_state;
    std::string m_day; // on which the reversal is booked
    TextLabel* m_explanation = nullptr;
    ReversalRows* m_rows = nullptr;
    QLineEdit* m_reason = nullptr;
    FormField* m_reasonField = nullptr;
};
