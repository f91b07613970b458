#pragma once

#include <string_view>

namespace LedgerService {

class Connection;

/// From where a person has signed in: digests of client addresses, a few for each person.
namespace KnownPlaceRepository {

/// Whether the person has signed in from there since that stamp.
bool isKnown(Connection& connection, std::string_view userID, std::string_view place, std::string_view since);

/// Remembers the place, and forgets the one that was not used for the longest time when there are too many.
void remember(Connection& connection, std::string_view userID, std::string_view place, std::string_view now);

}

}
