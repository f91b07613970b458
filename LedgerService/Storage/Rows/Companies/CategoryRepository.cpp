#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

namespace {

constexpr Columns columns{column("id", &Category::id),
                          column("kind", &Category::kind),
                          column("names", &Category::names),
                          column("symbol", &Category::symbol),
                          column("archived", &Category::archived),
                          column("parent_id", &Category::parentID),
                          column("sort_order", &Category::sortOrder),
                          column("preset_id", &Category::presetID),
                          column("default_enabled", &Category::defaultEnabled)};

const auto selectCategory = columns.select("FROM categories WHERE company_id = :company AND id = :category");
const auto selectCategories = columns.select("FROM categories WHERE company_id = :company ORDER BY position");
const auto insertCategory =
    columns.insert("categories", {{"company_id", ":company"},
                                  {"position", "(SELECT COUNT(*) FROM categories WHERE company_id = :company)"}});
const auto updateCategory = columns.update("categories", "company_id = :company AND id = :id");

}

std::optional<Category> CategoryRepository::find(Connection& connection, std::string_view companyID,
                                                 std::string_view categoryID)
{
    Query query{connection, selectCategory};
    query.bind("company", companyID).bind("category", categoryID);
    return recordOf<Category>(query, columns);
}

std::vector<Category> CategoryRepository::all(Connection& connection, std::string_view companyID)
{
    Query query{connection, selectCategories};
    query.bind("company", companyID);
    return recordsOf<Category>(query, columns);
}

void CategoryRepository::insert(Connection& connection, std::string_view companyID, const Category& category)
{
    Query query{connection, insertCategory};
    columns.bind(query.bind("company", companyID), category);
    query.run();
}

void CategoryRepository::update(Connection& connection, std::string_view companyID, const Category& category)
{
    Query query{connection, updateCategory};
    columns.bind(query.bind("company", companyID), category);
    query.run();
}

}
