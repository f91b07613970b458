#include "LedgerService/testing/Random/RandomCommands.h"

#include <array>
#include <cstdint>

#include <fmt/core.h>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

constexpr std::array accountIDs{"bank", "branch", "float", "refunds", "vault", "closed", "hidden", "nowhere"};
constexpr std::array<std::int64_t, 5> oddAmounts{0, -1, Money::maximumMinor, Money::maximumMinor + 1, INT64_MIN};

}

std::string RandomCommands::actor()
{
    return of(std::array{"mira", "mira", "mira", "rudi", "rudi", "guest", "gone"});
}

std::string RandomCommands::entryOf(const Books& company)
{
    return once(20) ? "none" : of(company.entries).id;
}

std::int64_t RandomCommands::amount()
{
    return once(40) ? of(oddAmounts) : static_cast<std::int64_t>(1 + below(40'000));
}

TransactionInput RandomCommands::soundInput()
{
    using namespace SampleBooks;
    using Make = TransactionInput (*)(std::int64_t);
    constexpr std::array<Make, 8> kinds{income, income, expense, transfer, funding, returning, refund, opening};
    if (!once(9))
        return of(kinds)(amount());
    const auto sent = amount();
    return exchange(sent, amount());
}

void RandomCommands::disturb(TransactionInput& input)
{
    if (input.sourceAccountID && once(3))
        input.sourceAccountID = of(accountIDs);
    if (input.targetAccountID && once(3))
        input.targetAccountID = of(accountIDs);
    if (once(12))
        input.currency = "USD";
    if (once(12))
        input.date = of(std::array{"2026-01-01", "2025-12-31", "2026-03-12", "2026-02-02"});
    if (input.categoryID && once(5))
        input.categoryID = of(std::array{"sales", "rent", "fax", "none"});
    if (once(30))
        input.attachmentIDs = {of(std::array{"linked", "free", "none"})};
}

TransactionInput RandomCommands::inputFor(const Books& company)
{
    auto input = soundInput();
    disturb(input);
    if (input.kind != EntryKind::refund)
        return input;
    if (once(3))
        input.originalTransactionID = entryOf(company);
    if (once(3))
        input.externalReference = fmt::format("R-{}", below(3));
    return input;
}

}
