#include "LedgerService/Commands/CategoryCommands.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Categories/CategoryRules.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"

namespace LedgerService {

std::expected<std::string, Refusal> CategoryCommands::create(const CommandAct& act, const CategoryCreate& command)
{
    const auto categories = CategoryRepository::all(act.connection, act.companyID);
    if (const auto* const existing = CategoryRules::alreadyCreated(command, categories);
        existing && MemberRights::canManage(act.member)) {
        act.note.isRepetition = true;
        return existing->id;
    }
    if (const auto refused = CategoryRules::whyNotCreate(command, act.member, categories))
        return std::unexpected(SetupRefusal::of(*refused));
    auto category = CategoryRules::created(command, Random::identifier(), categories);
    CategoryRepository::insert(act.connection, act.companyID, category);
    act.note.record = category.id;
    return std::move(category.id);
}

std::expected<void, Refusal> CategoryCommands::update(const CommandAct& act, std::string_view categoryID,
                                                      const CategoryUpdate& command)
{
    const auto categories = CategoryRepository::all(act.connection, act.companyID);
    if (const auto refused = CategoryRules::whyNotUpdate(categoryID, command, act.member, categories))
        return std::unexpected(SetupRefusal::of(*refused));
    const auto& before = *std::ranges::find(categories, categoryID, &Category::id);
    const auto after = CategoryRules::updated(before, command, categories);
    CategoryRepository::update(act.connection, act.companyID, after);
    act.tell(before, after);
    return {};
}

std::expected<void, Refusal> CategoryCommands::reorder(const CommandAct& act, const CategoryReorder& command)
{
    const auto categories = CategoryRepository::all(act.connection, act.companyID);
    if (const auto refused = CategoryRules::whyNotReorder(command, act.member, categories))
        return std::unexpected(SetupRefusal::of(*refused));
    for (const auto& each : CategoryRules::reordered(command, categories))
        CategoryRepository::update(act.connection, act.companyID, each);
    return {};
}

}
