#pragma once

#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// How often something was tried within the current window of time, and when that ends.
struct AttemptCount {
    int count = 0;
    std::string windowEndsAt; // stamp; empty when nothing was tried
};

/// Counts attempts within a window of time, by scope ("address:…"). Kept in the database, so that all processes of a
/// service count together.
namespace AttemptRepository {

AttemptCount current(Connection& connection, std::string_view scope, std::string_view now);

/// Counts one more attempt; the window starts anew once it has ended.
void count(Connection& connection, std::string_view scope, std::string_view now, std::string_view windowEndsAt);

/// Counts one attempt less.
void takeBack(Connection& connection, std::string_view scope);

void forget(Connection& connection, std::string_view scope);

/// Removes a few of those whose window has ended, so that nobody pays for all of them at once.
void removeSomeEnded(Connection& connection, std::string_view now);

}

}
