#include <array>

#include "LedgerCore/Domain/Categories/CategoryRules.h"
#include "LedgerService/Books/SetupRefusal.h"
#include "LedgerService/Commands/CategoryCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"

namespace LedgerService {

namespace {

/// A change as clients send it: those that do not say `updateParent` move the category by naming `parentID` at all.
struct SentUpdate {
    std::optional<TextMap> names;
    std::optional<bool> archived;
    std::optional<std::string> symbol;
    std::optional<std::string> parentID;
    std::optional<bool> updateParent;
};
BOOST_DESCRIBE_STRUCT(SentUpdate, (), (names, archived, symbol, parentID, updateParent))

/// Read from a body only when that names the key, be it with null.
struct ParentNamed {
    Json::Unread<std::optional<std::string>> parentID;
};
BOOST_DESCRIBE_STRUCT(ParentNamed, (), (parentID))

}

template <>
std::expected<CategoryUpdate, Refusal> RequestBody::decode<CategoryUpdate>(Request& request)
{
    const bool namesParent = Json::decode<ParentNamed>(request.body).has_value();
    auto sent = decode<SentUpdate>(request);
    if (!sent)
        return std::unexpected(std::move(sent.error()));
    CategoryUpdate update;
    update.names = std::move(sent->names);
    update.archived = sent->archived;
    update.symbol = std::move(sent->symbol);
    update.parentID = std::move(sent->parentID);
    update.updateParent = sent->updateParent.value_or(namesParent);
    return update;
}

namespace {

template <class Command>
std::optional<Refusal> whyNotShaped(const Command& command)
{
    const auto refused = CategoryRules::whyNotShaped(command);
    return refused ? std::optional{SetupRefusal::of(*refused)} : std::nullopt;
}

std::expected<NewSnapshot, Refusal> create(const MemberCall& call, const CategoryCreate& command)
{
    auto id = CategoryCommands::create(actOf(call), command);
    if (!id)
        return std::unexpected(std::move(id.error()));
    return NewSnapshot{.key = "createdCategoryID", .value = *std::move(id)};
}

std::expected<NewSnapshot, Refusal> update(const MemberCall& call, const CategoryUpdate& command)
{
    auto updated = CategoryCommands::update(actOf(call), call.parameters.front(), command);
    if (!updated)
        return std::unexpected(std::move(updated.error()));
    return NewSnapshot{};
}

std::expected<NewSnapshot, Refusal> reorder(const MemberCall& call, const CategoryReorder& command)
{
    auto reordered = CategoryCommands::reorder(actOf(call), command);
    if (!reordered)
        return std::unexpected(std::move(reordered.error()));
    return NewSnapshot{};
}

constexpr std::array routes{
    Route{"POST", "/v1/categories", writing<&create, &whyNotShaped<CategoryCreate>>},
    Route{"PATCH", "/v1/categories/{id}", writing<&update, &whyNotShaped<CategoryUpdate>>},
    Route{"POST", "/v1/categories/reorder", writing<&reorder, &whyNotShaped<CategoryReorder>>},
};

}

std::span<const Route> RouteFamilies::categories()
{
    return routes;
}

}
