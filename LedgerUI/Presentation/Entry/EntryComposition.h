#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "LedgerUI/Presentation/Entry/EntryFormContent.h"
#include "LedgerUI/Presentation/Entry/EntryHistory.h"

/// An entry that is being written, with the books that it is judged by: what the entry form does, without a window.
class EntryComposition {
public:
    EntryComposition(const SnapshotPointer& snapshot, EntrySubmission submission);

    [[nodiscard]] EntrySubmission& submission() { return m_submission; }
    [[nodiscard]] const EntrySubmission& submission() const { return m_submission; }
    [[nodiscard]] const TransactionDraft& draft() const { return m_submission.form().draft; }
    /// Whether leaving would lose something that a person entered. What was sent once is a draft from the start.
    [[nodiscard]] bool hasDraft() const { return EntryForm::hasDraft(draft(), m_initial); }
    [[nodiscard]] EntryFormContent content(std::string_view today, std::string_view locale) const;

    /// Takes what a change made of the form. Whether categories and refundable incomes must be offered anew: those are
    /// for the kind and the currency.
    bool edit(EntryEditing changed);
    /// Judges the draft, and gives the command for it when nothing is wrong.
    std::optional<TransactionInput> checked(const std::string& today, std::string_view locale,
                                            const std::string& freshKey);
    /// Another snapshot: what is no longer on offer is cleared.
    void adopt(const SnapshotPointer& snapshot);
    /// Another language: amounts in its separators.
    void adoptLanguage(std::string_view before, std::string_view locale);
    /// The draft goes on under this key: the one that it was sent with, or another where somebody else goes on with it.
    void rekey(std::string key);
    /// The next entry like the one that is recorded now.
    void goOn(const SnapshotPointer& snapshot, std::string freshKey);

private:
    void take(const SnapshotPointer& snapshot);

    SnapshotPointer m_snapshot;
    VisibleBooks m_books;
    EntryHistory m_history;
    EntrySubmission m_submission;
    TransactionDraft m_initial;
};
