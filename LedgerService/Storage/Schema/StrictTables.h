#pragma once

#include <string>

namespace LedgerService {

class Connection;

namespace StrictTables {

/// Makes every table anew with the same rows, so that its columns take values of their own type only. Throws when a
/// table holds a value that its column does not take. Expects a transaction in which foreign keys are not enforced.
void makeAll(Connection& connection);

/// Makes the table anew, with its rows and indexes, in the form that the statement of its making says. Foreign keys are
/// not looked at meanwhile.
void makeAnew(Connection& connection, const std::string& table, const std::string& statement);

/// The same for a table that is laid out by its primary key from then on, without numbers of rows.
void makeByKey(Connection& connection, const std::string& table, const std::string& statement);

}

}
