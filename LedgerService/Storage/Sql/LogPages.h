#pragma once

#include <atomic>
#include <memory>

namespace LedgerService {

class Connection;

/// The log that a file's changes are written to.
namespace LogPages {

/// After each commit of the connection `pages` is how many pages the log holds. The connection itself brings them into
/// the file only when nobody else has done so for long.
void count(Connection& connection, std::shared_ptr<std::atomic<int>> pages);

}

}
