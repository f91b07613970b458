#include "LedgerService/Storage/Rows/CategoryRepository.h"

#include "LedgerService/Storage/Sql/JsonColumn.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

namespace {

constexpr auto selectCategory = R"sql(
    SELECT id, kind, names, symbol, archived, parent_id, sort_order, preset_id, default_enabled
    FROM categories WHERE company_id = :company AND id = :category
)sql";

constexpr auto selectCategories = R"sql(
    SELECT id, kind, names, symbol, archived, parent_id, sort_order, preset_id, default_enabled
    FROM categories WHERE company_id = :company ORDER BY position
)sql";

constexpr auto insertCategory = R"sql(
    INSERT INTO categories (company_id, id, position, kind, names, symbol, archived, parent_id, sort_order, preset_id,
                            default_enabled)
    VALUES (:company, :id, (SELECT COUNT(*) FROM categories WHERE company_id = :company), :kind, :names, :symbol,
            :archived, :parent, :sort_order, :preset, :enabled)
)sql";

std::vector<Category> categoriesOf(Query& query)
{
    std::vector<Category> categories;
    Category each;
    std::string names;
    query.into(each.id).into(each.kind).into(names).into(each.symbol).into(each.archived).into(each.parentID);
    query.into(each.sortOrder).into(each.presetID).into(each.defaultEnabled);
    while (query.next()) {
        each.names = JsonColumn::read<TextMap>(names);
        categories.push_back(each);
    }
    return categories;
}

}

std::optional<Category> CategoryRepository::find(Connection& connection, std::string_view companyID,
                                                 std::string_view categoryID)
{
    Query query{connection, selectCategory};
    query.bind("company", companyID).bind("category", categoryID);
    auto found = categoriesOf(query);
    return found.empty() ? std::nullopt : std::optional{std::move(found.front())};
}

std::vector<Category> CategoryRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectCategories};
    query.bind("company", companyID);
    return categoriesOf(query);
}

void CategoryRepository::insert(Connection& connection, std::string_view companyID, const Category& category)
{
    const auto enabled = category.defaultEnabled ? std::optional<int>{*category.defaultEnabled} : std::nullopt;
    Query{connection, insertCategory}
        .bind("company", companyID)
        .bind("id", category.id)
        .bind("kind", category.kind)
        .bind("names", Json::encode(category.names))
        .bind("symbol", category.symbol)
        .bind("archived", category.archived)
        .bind("parent", category.parentID)
        .bind("sort_order", category.sortOrder)
        .bind("preset", category.presetID)
        .bind("enabled", enabled)
        .run();
}

}
