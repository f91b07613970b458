#pragma once

namespace LedgerService {

class Connection;

/// Has the tables that every entry adds rows to cost as few pages as they can: a file lays them out by their keys,
/// without a second tree for the numbers of their rows, and an entry that reverses nothing is in no index of reversals.
/// Which entries touch an account is known by the sets of accounts, so that legs need no index by account.
namespace KeyedTablesStep {

void apply(Connection& connection);

}

}
