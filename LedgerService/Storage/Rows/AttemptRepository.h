#pragma once

#include <string_view>

namespace LedgerService {

class Connection;

/// Counts attempts within a window of time, by scope ("email:…", "address:…"). Kept in the database, so that all
/// processes of a service count together.
namespace AttemptRepository {

/// Counts one more attempt and gives the count within the current window, which starts anew once it has ended.
int count(Connection& connection, std::string_view scope, std::string_view now, std::string_view windowEndsAt);

void forget(Connection& connection, std::string_view scope);

void removeEnded(Connection& connection, std::string_view now);

}

}
