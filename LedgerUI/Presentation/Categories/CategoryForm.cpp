#include "LedgerUI/Presentation/Categories/CategoryForm.h"

#include <algorithm>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr std::string_view newSymbol = "tag";

/// Without blanks around them, and without the languages that name nothing.
TextMap tidied(const TextMap& names)
{
    TextMap tidy;
    for (const auto& [language, name] : names) {
        const auto text = TextFold::trimmed(name);
        if (!text.empty())
            tidy.emplace(language, text);
    }
    return tidy;
}

std::optional<std::string> optional(const std::string& id)
{
    return id.empty() ? std::nullopt : std::optional{id};
}

}

CategoryForm CategoryForm::fresh(std::string_view kind)
{
    CategoryForm form;
    form.kind = kind;
    form.symbol = newSymbol;
    return form;
}

CategoryForm CategoryForm::of(const Category& category)
{
    return {.id = category.id,
            .kind = category.kind,
            .parentID = category.parentID.value_or(""),
            .names = tidied(category.names),
            .symbol = category.symbol};
}

CategoryForm CategoryForm::rebased(const CategoryForm& before, const CategoryForm& now) const
{
    auto result = now;
    if (parentID != before.parentID)
        result.parentID = parentID;
    if (symbol != before.symbol)
        result.symbol = symbol;
    const auto nameIn = [](const TextMap& texts, const auto& language) {
        const auto found = texts.find(language);
        return found == texts.end() ? std::string{} : found->second;
    };
    for (const auto language : AppLanguage::supportedLocales) {
        const auto mine = nameIn(names, language);
        if (mine != nameIn(before.names, language))
            result.names[std::string{language}] = mine;
    }
    std::erase_if(result.names, [](const auto& each) { return each.second.empty(); });
    return result;
}

CategoryCreate CategoryForm::creation() const
{
    return {.kind = kind, .names = tidied(names), .symbol = symbol, .parentID = optional(parentID), .presetID = {}};
}

CategoryUpdate CategoryForm::update(const CategoryForm& saved) const
{
    CategoryUpdate update;
    if (tidied(names) != tidied(saved.names))
        update.names = tidied(names);
    if (symbol != saved.symbol)
        update.symbol = symbol;
    if (parentID != saved.parentID) {
        update.parentID = optional(parentID);
        update.updateParent = true;
    }
    return update;
}

std::optional<CategoryRules::Refusal> CategoryForm::whyNot(const CategoryForm& saved,
                                                           const LedgerSnapshot& snapshot) const
{
    if (id.empty()) {
        const auto command = creation();
        if (const auto refused = CategoryRules::whyNotShaped(command))
            return refused;
        return CategoryRules::whyNotCreate(command, snapshot.currentMember, snapshot.categories);
    }
    const auto command = update(saved);
    if (const auto refused = CategoryRules::whyNotShaped(command))
        return refused;
    return CategoryRules::whyNotUpdate(id, command, snapshot.currentMember, snapshot.categories);
}

QString CategoryForm::title(std::string_view locale) const
{
    const auto name = localizedName(tidied(names), locale);
    return name.empty() ? wordIn(locale, categoryWords(), "new") : qString(name);
}

QString CategoryText::refusal(CategoryRules::Refusal refused, std::string_view locale)
{
    using enum CategoryRules::Refusal;
    const auto& words = categoryWords();
    switch (refused) {
    case noAuthority:
        return wordIn(locale, words, "refused.noAuthority");
    case nameRequired:
        return wordIn(locale, words, "refused.nameRequired");
    case nameUnsound:
        return wordIn(locale, words, "refused.nameUnsound");
    case nameTaken:
        return wordIn(locale, words, "refused.nameTaken");
    case parentInvalid:
    case parentInactive:
        return wordIn(locale, words, "refused.parent");
    case archived:
        return wordIn(locale, words, "refused.archived");
    case hasActiveChildren:
        return wordIn(locale, words, "refused.children");
    case orderUnsound:
    case orderChanged:
        return wordIn(locale, words, "refused.order");
    case unknownCategory:
    case unknownKind:
    case unknownPreset:
    case symbolUnsound:
        break;
    }
    return wordIn(locale, words, "refused.other");
}

std::optional<CategoryRules::Refusal> CategoryText::whyNotArchived(const Category& category, bool isArchived,
                                                                   const LedgerSnapshot& snapshot)
{
    CategoryUpdate update;
    update.archived = isArchived;
    return CategoryRules::whyNotUpdate(category.id, update, snapshot.currentMember, snapshot.categories);
}
