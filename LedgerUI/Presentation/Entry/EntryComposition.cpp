#include "LedgerUI/Presentation/Entry/EntryComposition.h"

#include "LedgerUI/Presentation/Entry/EntryEdits.h"

EntryComposition::EntryComposition(const SnapshotPointer& snapshot, EntrySubmission submission)
    : m_snapshot{snapshot}, m_books{*snapshot}, m_history{snapshot}, m_submission{std::move(submission)}
{
    if (!m_submission.command())
        m_initial = draft();
}

EntryFormContent EntryComposition::content(std::string_view today, std::string_view locale) const
{
    return EntryForm::content(m_submission, *m_snapshot, today, locale, &m_history);
}

bool EntryComposition::edit(EntryEditing changed)
{
    const auto before = draft();
    m_submission.edit(std::move(changed));
    return draft().kind != before.kind || draft().currency != before.currency;
}

std::optional<TransactionInput> EntryComposition::checked(const std::string& today, std::string_view locale,
                                                          const std::string& freshKey)
{
    auto input = EntryForm::command(m_submission, m_books, today, locale, freshKey);
    auto judged = m_submission.form();
    judged.problems = input ? std::vector<EntryProblem>{} : std::move(input.error());
    m_submission.edit(std::move(judged));
    return input ? std::optional{std::move(*input)} : std::nullopt;
}

void EntryComposition::adopt(const SnapshotPointer& snapshot)
{
    take(snapshot);
    if (m_submission.isEditing())
        m_submission.adopt(EntryEdits::refreshed(m_submission.form(), *snapshot));
}

void EntryComposition::adoptLanguage(std::string_view before, std::string_view locale)
{
    auto rewritten = m_submission.form();
    for (auto* amount : {&rewritten.draft.amount, &rewritten.draft.targetAmount})
        *amount = EntryForm::rewritten(*amount, before, locale);
    m_submission.adopt(std::move(rewritten));
}

void EntryComposition::rekey(std::string key)
{
    auto rekeyed = m_submission.form();
    rekeyed.draft.idempotencyKey = std::move(key);
    m_submission.adopt(std::move(rekeyed));
}

void EntryComposition::goOn(const SnapshotPointer& snapshot, std::string freshKey)
{
    take(snapshot);
    m_submission = EntrySubmission{EntryEdits::following(m_submission.form(), *snapshot, std::move(freshKey))};
    m_initial = draft();
}

void EntryComposition::take(const SnapshotPointer& snapshot)
{
    m_snapshot = snapshot;
    m_books = VisibleBooks{*snapshot};
    m_history = EntryHistory{snapshot};
}
