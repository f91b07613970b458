#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/EntryTemplate.h"

namespace LedgerService {

class Connection;

/// A template as its row has it; its settled days are read by themselves.
struct StoredTemplate {
    EntryTemplate kept;
    std::string createdAt;
    std::optional<std::string> removedAt; // set: it is taken away
};

/// Who did what about a due day, and when.
struct StoredDay {
    std::string templateID;
    SettledDay settled;
    std::string memberID;
    std::string at; // stamp
};

namespace TemplateRepository {

/// Also one that was taken away.
std::optional<StoredTemplate> find(Connection& connection, std::string_view companyID, std::string_view templateID);

/// Those that were not taken away, in the order of their making, with their settled days from `firstDay` on.
std::vector<EntryTemplate> all(Connection& connection, std::string_view companyID, std::string_view firstDay);

/// How many of them are the member's.
int countOf(Connection& connection, std::string_view companyID, std::string_view memberID);

void insert(Connection& connection, std::string_view companyID, const StoredTemplate& stored);

void update(Connection& connection, std::string_view companyID, const StoredTemplate& stored);

std::optional<SettledDay> day(Connection& connection, std::string_view companyID, std::string_view templateID,
                              std::string_view day);

/// Writes the day over what stands for it.
void settle(Connection& connection, std::string_view companyID, const StoredDay& day);

/// Has the day wait for a person again.
void open(Connection& connection, std::string_view companyID, std::string_view templateID, std::string_view day);

}

}
