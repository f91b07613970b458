#pragma once

#include <string>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Commands/CommandNote.h"

namespace LedgerService {

class Connection;
struct KnownSections;

/// Who carries a command out, where and when. Commands expect a writing transaction; with a refusal nothing was
/// written.
struct CommandAct {
    Connection& connection;
    const std::string& companyID;
    const Member& member;
    const std::string& today;  // the company's day
    const std::string& now;    // stamp
    const std::string& origin; // the address from which it was given
    CommandNote& note;         // what the command tells of itself
    const KnownSections& sections;

    /// Tells how a record stood and how it stands now.
    template <class Record>
    void tell(const Record& before, const Record& after) const
    {
        note.before = Json::encode(before);
        note.after = Json::encode(after);
    }
};

}
