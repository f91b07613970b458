#pragma once

namespace LedgerService {

class Connection;

namespace StrictTables {

/// Makes every table anew with the same rows, so that its columns take values of their own type only. Throws when a
/// table holds a value that its column does not take. Expects a transaction in which foreign keys are not enforced.
void makeAll(Connection& connection);

}

}
