#include "Benchmarks/ServedBooks.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include <fmt/core.h>

#include "Benchmarks/BookGenerator.h"
#include "LedgerService/Commands/CompanyFounding.h"
#include "LedgerService/Identity/Password.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

using namespace LedgerService;

namespace {

CompanyFounding foundingOf(std::size_t entryCount)
{
    auto generated = BookGenerator::books(entryCount);
    CompanyFounding founding;
    founding.company = std::move(generated.company);
    founding.company.approvalStatus = "approved";
    founding.company.enabledLocales = {"en-US"};
    founding.books.settings.emplace();
    founding.books.settings->bookkeepingStartDate = "2021-01-01";
    founding.books.members = std::move(generated.members);
    for (std::size_t at = 0; at < founding.books.members.size(); ++at)
        founding.books.members[at].email = fmt::format("member{}@harbour.example", at);
    founding.books.accounts = std::move(generated.accounts);
    founding.books.categories = std::move(generated.categories);
    founding.books.attachments = generated.attachments.toVector();
    founding.books.entries = generated.transactions.toVector();
    founding.passwordHash = Password::hash(ServedBooks::password);
    return founding;
}

}

void ServedBooks::write(const std::string& databaseFile, std::size_t entryCount)
{
    for (const auto* each : {"", "-wal", "-shm"}) // of a file
        std::filesystem::remove(databaseFile + each);
    const auto founding = foundingOf(entryCount);
    const auto database = Database::open(databaseFile);
    if (!database)
        throw std::runtime_error(database.error());
    const auto loan = (*database)->borrow();
    Transaction transaction{*loan, Transaction::Mode::writing};
    founding.write(*loan);
    transaction.commit();
}
