#include "LedgerCore/Client/Operations/CategoryOperations.h"

#include <utility>

#include "LedgerCore/Client/Operations/OperationRunner.h"
#include "LedgerCore/Domain/Records/Requests/TransactionColorSelection.h"

using enum OperationRunner::Publishing;

QCoro::Task<Result<std::string>> CategoryOperations::createCategory(CategoryCreate category)
{
    return m_runner.create({.method = "POST", .path = "v1/categories", .body = Json::encode(category)}, on);
}

QCoro::Task<Result<void>> CategoryOperations::updateCategory(std::string id, CategoryUpdate update)
{
    if (!update.updateParent)
        update.parentID.reset();
    return m_runner.change({.method = "PATCH", .path = "v1/categories/" + id, .body = Json::encode(update)}, on);
}

QCoro::Task<Result<void>> CategoryOperations::reorderCategories(CategoryReorder order)
{
    return m_runner.change({.method = "POST", .path = "v1/categories/reorder", .body = Json::encode(order)}, on);
}

QCoro::Task<Result<void>> CategoryOperations::setCategorySelected(std::string id, bool selected)
{
    const CategorySelection selection{.categoryID = std::move(id), .selected = selected};
    return m_runner.change({.method = "PATCH", .path = "v1/me/category-preferences", .body = Json::encode(selection)},
                           on);
}

QCoro::Task<Result<void>> CategoryOperations::setTransactionColor(std::string kind, std::string colorID)
{
    const TransactionColorSelection selection{.kind = std::move(kind), .colorID = std::move(colorID)};
    return m_runner.change(
        {.method = "PATCH", .path = "v1/company/transaction-colors", .body = Json::encode(selection)}, on);
}
