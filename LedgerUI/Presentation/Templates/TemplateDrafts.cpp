#include "LedgerUI/Presentation/Templates/TemplateDrafts.h"

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Templates/TemplateRules.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Presentation/Forms/AmountTyping.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

std::string typed(const std::optional<std::int64_t>& minor, std::string_view currency, std::string_view locale)
{
    return minor ? Money::formatDigits(*minor, currency, locale) : std::string{};
}

std::optional<std::int64_t> minorOf(const std::string& amount, std::string_view currency, std::string_view locale)
{
    const auto minor = AmountTyping::minor(qString(amount), currency, locale);
    return minor && *minor > 0 ? minor : std::nullopt;
}

}

bool TemplateDrafts::recurs(std::string_view kind)
{
    return TemplateRules::takesKind(kind);
}

TransactionDraft TemplateDrafts::draftOf(const EntryTemplate& kept, const std::optional<std::string>& dueDay,
                                         std::string_view locale)
{
    const auto& entry = kept.entry;
    TransactionDraft draft;
    draft.kind = entry.kind;
    draft.note = entry.note;
    draft.categoryID = entry.categoryID;
    draft.source = entry.sourceAccountID;
    draft.target = entry.targetAccountID;
    draft.currency = entry.currency;
    draft.amount = typed(entry.amountMinor, entry.currency, locale);
    if (entry.targetCurrency) {
        draft.targetCurrency = *entry.targetCurrency;
        draft.targetAmount = typed(entry.targetAmountMinor, *entry.targetCurrency, locale);
    }
    if (dueDay) {
        draft.date = *dueDay;
        draft.idempotencyKey = TemplateOccurrence{.templateID = kept.id, .day = *dueDay}.key();
    }
    return draft;
}

std::optional<TemplateEntry> TemplateDrafts::entryOf(const TransactionDraft& draft, std::string_view locale)
{
    if (!recurs(draft.kind) || !draft.primaryAccount() || draft.currency.empty() ||
        (draft.hasDestination() && !draft.target))
        return std::nullopt;
    TemplateEntry entry;
    entry.kind = draft.kind;
    entry.note = draft.note;
    if (draft.hasCategory())
        entry.categoryID = draft.categoryID;
    entry.sourceAccountID = draft.source;
    entry.targetAccountID = draft.target;
    entry.currency = draft.currency;
    entry.amountMinor = minorOf(draft.amount, draft.currency, locale);
    if (draft.kind == EntryKind::exchange) {
        entry.targetCurrency = draft.targetCurrency;
        entry.targetAmountMinor = minorOf(draft.targetAmount, draft.targetCurrency, locale);
    }
    return entry;
}

std::string TemplateDrafts::suggestedName(const TemplateEntry& entry, const LedgerSnapshot& snapshot,
                                          std::string_view locale)
{
    if (Naming::isName(entry.note))
        return entry.note;
    const CategoryDirectory categories{snapshot.categories};
    const auto* const category = categories.find(EntryText::given(entry.categoryID));
    return category ? categories.fullPathName(*category, locale) : std::string{};
}
