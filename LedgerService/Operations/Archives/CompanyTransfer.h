#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <string>

#include "LedgerService/Operations/Archives/CompanyArrival.h"

namespace LedgerService {

/// Taking one company with everything that belongs to it from a database to another: its people, books, settings,
/// capital, dividends, receipts, remembered commands and audit trail.
namespace CompanyTransfer {

enum class Afterwards {
    open,  // the company goes on as before
    closed // nobody gets in any more: from the archive's state on, nothing was written
};

struct Export {
    std::string database;
    std::string files = {}; // what receipts are kept beside, named for a database that a server keeps
    std::string companyID;
    std::string archive;
    Afterwards afterwards = Afterwards::open;
};

/// Makes the new archive, which is also a backup of a database with this company alone; or says in words why not. The
/// service may run.
std::optional<std::string> carryOut(const Export& order);

struct Imported {
    std::string companyID;
    std::string name;
    std::size_t entries = 0;
    std::size_t receipts = 0;
};

/// Puts the one company of an archive into the database, which does not know it, verified before and after; or says in
/// words why not, and then nothing has changed. `files` as for an export. The service may run, and others write between
/// any two turns of the import; nobody finds the company before it is whole.
std::expected<Imported, std::string> importFrom(const std::string& archive, const std::string& database,
                                                const std::string& files = {}, const CompanyArrival::Pace& pace = {});

}

}
