#pragma once

#include <string_view>

#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"

class EntryDayNote;
class EntryFormBody;
class LedgerStore;

/// Records one entry. Deletes itself when it closes; open it with `open()` over its window.
class TransactionForm final : public FormDialog {
    Q_OBJECT
public:
    TransactionForm(LedgerStore& store, const EntryForm::Opening& opening, QWidget* parent);

    /// Whether entries of this kind can be recorded here; reversals, capital and dividends have their own places.
    static bool supports(std::string_view kind);

Q_SIGNALS:
    /// The entry is recorded and the form about to close. `entryID` is its id in the store's snapshot, empty when the
    /// ledger could not be reloaded.
    void recorded(const QString& entryID);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void bind();
    void offer();
    void present();
    void presentBanner();
    void presentLeaving();
    void submit();
    void send(EntrySaving saving);
    void finish(const Result<std::string>& reply);
    void focusFirstProblem();
    void adoptSnapshot();
    void retranslate();
    template <class Edit>
    void edit(Edit change);

    LedgerStore& m_store;
    SnapshotPointer m_snapshot; // what the form was last offered
    std::string m_locale;       // in whose separators the amounts stand
    EntryFormState m_state;
    TransactionDraft m_initial;
    EntryFormBody* m_body = nullptr;
    EntryDayNote* m_day = nullptr;
};
