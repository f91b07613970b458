#pragma once

#include <optional>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Entry/EntryComposition.h"

class BegunEntryOffer;
class CategoryCommands;
class DraftReceipts;
class DayField;
class EntryFormBody;
class TextLabel;

/// Records one entry. Deletes itself when it closes; open it with `open()` over its window.
class TransactionForm final : public CommandForm {
    Q_OBJECT
public:
    TransactionForm(LedgerStore& store, const EntryForm::Opening& opening, QWidget* parent);
    /// On an entry that an earlier form left behind.
    TransactionForm(LedgerStore& store, const KeptEntry& kept, QWidget* parent);

    /// Offers to keep what stands in the form as a template; whoever opens the form answers `templateWanted`.
    void offerTemplate();
    /// Offers to go on with what an earlier program left, in a form that was opened on nothing; whoever opens the form
    /// answers `continueWanted`.
    void offerBegun();

Q_SIGNALS:
    /// The entry is recorded and the form about to close. `entryID` is its id in the store's snapshot, empty when the
    /// ledger could not be reloaded.
    void recorded(const QString& entryID);
    /// The form has closed for an entry that was begun before, which is to be gone on with.
    void continueWanted(const EntryForm::Opening& opening);
    /// What stands in the form is to be kept as a template.
    void templateWanted(const TransactionDraft& draft);

private:
    void present() override;
    void adoptSnapshot() override;
    void adoptLanguage(const std::string& before) override;
    [[nodiscard]] QWidget& firstField() const override;
    [[nodiscard]] bool waitsForMember() const override { return false; } // it is kept as a draft

    TransactionForm(LedgerStore& store, EntrySubmission submission, QWidget* parent);
    void build();
    void buildBody();
    void bind();
    void bindDraft();
    void offer();
    void submit();
    /// What is to be recorded, unless something is wrong or receipts are on their way, which is said then.
    std::optional<TransactionInput> checked();
    void send(const TransactionInput& input);
    void presentBegun();
    void keepDraft();
    void takeAnotherKey(const std::string& key);
    void forget();
    [[nodiscard]] bool hasChanges() const;
    [[nodiscard]] Note noteOn(const EntryFormContent& shown) const;
    void finish(const Result<std::string>& reply);
    void refuse(const Failure& failure);
    /// Another entry like the one that is recorded now.
    void goOn();
    void edit(const EntryChange& change);

    EntryComposition m_entry;
    EntryFormBody* m_body = nullptr;
    DayField* m_day = nullptr;
    CategoryCommands* m_categories = nullptr;
    DraftReceipts* m_receipts = nullptr;
    QPushButton* m_another = nullptr;
    QPushButton* m_template = nullptr;
    QWidget* m_templateRow = nullptr;
    TextLabel* m_behind = nullptr;
    BegunEntryOffer* m_begun = nullptr;
    bool m_offersTemplate = false;
    bool m_isFresh = false; // opened on nothing
    bool m_offersBegun = false;
    bool m_goesOn = false;    // what is being saved is followed by another entry
    bool m_hasGoneOn = false; // at least once
};
