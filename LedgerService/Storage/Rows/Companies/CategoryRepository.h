#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Category.h"

namespace LedgerService {

class Connection;

namespace CategoryRepository {

std::optional<Category> find(Connection& connection, std::string_view companyID, std::string_view categoryID);

/// The company's categories in the order of their creation, archived ones included: old entries still name them.
std::vector<Category> all(Connection& connection, std::string_view companyID);

/// Adds the category after the company's others.
void insert(Connection& connection, std::string_view companyID, const Category& category);

/// Writes the category over what stands under its id.
void update(Connection& connection, std::string_view companyID, const Category& category);

}

}
