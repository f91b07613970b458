#pragma once

#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// Each company's secret that the tags of its snapshots are made with. Tags that were made with another one name
/// nothing: books that were copied and may go another way than those that they were copied from get a new one.
namespace SnapshotKeys {

std::string find(Connection& connection, std::string_view companyID);

/// A new secret for the company.
void draw(Connection& connection, std::string_view companyID);

}

}
