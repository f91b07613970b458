#include "LedgerUI/Screens/Entry/EntryDrafts.h"

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"

EntryDrafts::EntryDrafts(LedgerStore& store) : QObject{&store}, m_store{store} {}

EntryDrafts& EntryDrafts::of(LedgerStore& store)
{
    auto* known = store.findChild<EntryDrafts*>(QString{}, Qt::FindDirectChildrenOnly);
    return known ? *known : *new EntryDrafts{store};
}

void EntryDrafts::keep(TransactionDraft draft, std::string locale)
{
    const auto whose = m_store.signedIn();
    if (!whose)
        return;
    const bool isFirst = m_kept.insert_or_assign(*whose, Kept{std::move(draft), std::move(locale)}).second;
    if (isFirst)
        Q_EMIT changed();
}

void EntryDrafts::forget()
{
    const auto whose = m_store.signedIn();
    if (whose && m_kept.erase(*whose) > 0)
        Q_EMIT changed();
}

std::optional<TransactionDraft> EntryDrafts::kept(const std::string& locale) const
{
    const auto whose = m_store.signedIn();
    const auto found = whose ? m_kept.find(*whose) : m_kept.end();
    if (found == m_kept.end())
        return std::nullopt;
    auto draft = found->second.draft;
    for (auto* amount : {&draft.amount, &draft.targetAmount})
        *amount = EntryForm::rewritten(*amount, found->second.locale, locale);
    return draft;
}
