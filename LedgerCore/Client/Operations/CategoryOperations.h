#pragma once

#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/Category.h"

class OperationRunner;

/// What the store can have done to categories and to the colours of entries. Each ends with the new snapshot in place.
class CategoryOperations {
public:
    /// Gives the identifier of the new category.
    QCoro::Task<Result<std::string>> createCategory(CategoryCreate category);
    /// Only the fields that are set change, the parent only with `updateParent`.
    QCoro::Task<Result<void>> updateCategory(std::string id, CategoryUpdate update);
    QCoro::Task<Result<void>> reorderCategories(CategoryReorder order);
    /// Whether the member wants the category among those for quick entry.
    QCoro::Task<Result<void>> setCategorySelected(std::string id, bool selected);
    QCoro::Task<Result<void>> setTransactionColor(std::string kind, std::string colorID);

protected:
    explicit CategoryOperations(OperationRunner& runner) : m_runner{runner} {}
    ~CategoryOperations() = default;

private:
    OperationRunner& m_runner;
};
