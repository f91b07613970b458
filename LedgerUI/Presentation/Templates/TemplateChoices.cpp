#include "LedgerUI/Presentation/Templates/TemplateChoices.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerUI/Presentation/Entry/EntryChoices.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// Those that are offered, with the one that is chosen although it is offered no more.
std::vector<AccountChoice> with(const std::string& chosen, std::vector<AccountChoice> offered,
                                const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto* const account = snapshot.account(chosen);
    if (account && std::ranges::find(offered, chosen, &AccountChoice::id) == offered.end())
        offered.push_back(EntryChoices::account(*account, locale));
    return EntryChoices::grouped(offered, locale);
}

}

std::vector<AccountChoice> TemplateChoices::accounts(const TemplateEntry& entry, const LedgerSnapshot& snapshot,
                                                     std::string_view locale)
{
    std::vector<AccountChoice> offered;
    for (const auto* account : LedgerEntryAccess::accounts(snapshot, entry.kind)) {
        if (account->holds(entry.currency))
            offered.push_back(EntryChoices::account(*account, locale));
    }
    return with(TemplateForm::primaryAccount(entry).value_or(std::string{}), std::move(offered), snapshot, locale);
}

std::vector<AccountChoice> TemplateChoices::destinations(const TemplateEntry& entry, const LedgerSnapshot& snapshot,
                                                         std::string_view locale)
{
    std::vector<AccountChoice> offered;
    for (const auto& each : TemplateForm::destinations(entry, snapshot))
        offered.push_back(each.seen ? EntryChoices::account(*each.seen, locale)
                                    : EntryChoices::account(each.id, each.name, EntryChoices::Group::company, locale));
    return with(entry.targetAccountID.value_or(std::string{}), std::move(offered), snapshot, locale);
}

std::vector<TemplateChoices::CategoryChoice>
TemplateChoices::categories(const TemplateEntry& entry, const LedgerSnapshot& snapshot, std::string_view locale)
{
    std::vector<CategoryChoice> offered{{.id = {}, .name = wordIn(locale, templateWords(), "form.category.open")}};
    const CategoryDirectory directory{snapshot.categories};
    const auto add = [&](const Category& category) {
        offered.push_back({.id = category.id, .name = qString(directory.fullPathName(category, locale))});
    };
    for (const auto* each : directory.selectable(entry.kind))
        add(*each);
    const auto chosen = EntryText::given(entry.categoryID);
    const auto* const category = directory.find(chosen);
    if (category && std::ranges::find(offered, chosen, &CategoryChoice::id) == offered.end())
        add(*category);
    return offered;
}
