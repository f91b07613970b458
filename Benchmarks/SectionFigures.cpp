#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include "Benchmarks/Samples.h"
#include "Benchmarks/ServedBooks.h"
#include "LedgerService/Books/DividendRows.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/Sections/DividendRepository.h"
#include "LedgerService/Storage/Rows/Sections/KnownSections.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

using namespace LedgerService;

namespace {

constexpr auto day = "2026-03-10";
constexpr int owners = 5;

DividendChange changeOf(const std::string& memberID, int revision, std::string_view action,
                        decltype(DividendChange::made) made)
{
    return {.revision = revision,
            .action = std::string{action},
            .date = day,
            .note = {},
            .memberID = memberID,
            .createdAt = "2026-03-10T09:30:00.000Z",
            .made = std::move(made)};
}

DividendBatch batchOf(int number)
{
    DividendBatch batch{.id = fmt::format("batch-{:026}", number),
                        .period = fmt::format("Allocation {}", number),
                        .currency = "IDR",
                        .amountMinor = std::int64_t{1'000} * owners,
                        .date = {},
                        .createdAt = {},
                        .lines = {},
                        .cancelled = false,
                        .cancelledDate = {}};
    for (int owner = 0; owner < owners; ++owner)
        batch.lines.push_back({fmt::format("owner-{:026}", owner), fmt::format("Owner {}", owner), 2'000, 1'000});
    return batch;
}

/// A dividend section of so many allocations.
void fill(Connection& connection, const std::string& companyID, const std::string& memberID, int batches)
{
    Transaction transaction{connection, Transaction::Mode::writing};
    std::vector<DividendParticipant> participants;
    participants.reserve(owners);
    for (int owner = 0; owner < owners; ++owner)
        participants.push_back({.id = fmt::format("owner-{:026}", owner),
                                .name = fmt::format("Owner {}", owner),
                                .memberID = {},
                                .ratioBps = 2'000});
    DividendRepository::append(connection, companyID,
                               changeOf(memberID, 1, DividendAction::fillFromOwnership, participants));
    for (int number = 0; number < batches; ++number)
        DividendRepository::append(connection, companyID,
                                   changeOf(memberID, number + 2, DividendAction::allocate, batchOf(number)));
    transaction.commit();
}

/// What a command decides on, once its section is there.
void decideOn(std::shared_ptr<const DividendState> state, const Member& member)
{
    DividendRows rows{.rows = {}, .state = std::move(state), .capital = nullptr};
    rows.rows.member = member;
    rows.rows.members = {member};
    rows.rows.recordID = "next";
    rows.rows.today = day;
    rows.rows.now = "2026-03-10T09:30:00.000Z";
    DividendCommand command;
    command.action = DividendAction::allocate;
    command.expectedRevision = rows.state->revision;
    command.date = day;
    command.period = "Next";
    command.currency = "IDR";
    command.amountMinor = 5'000;
    command.shares.emplace();
    for (const auto& each : rows.state->participants)
        command.shares->push_back({each.id, each.ratioBps});
    if (const auto decision = decide(command, rows); !decision)
        throw std::runtime_error(decision.error().message);
}

void measure(const std::string& file, int batches)
{
    ServedBooks::write(file, 10);
    const auto database = Database::open(file);
    if (!database)
        throw std::runtime_error(database.error());
    const auto loan = (*database)->borrow();
    const auto companyID = CompanyRepository::allIDs(*loan).front();
    auto member = MemberRepository::all(*loan, companyID).front();
    member.role = MemberRole::owner;
    member.permissions.reset();
    fill(*loan, companyID, member.id, batches);
    auto& known = (*database)->sections().dividends;
    {
        const Transaction transaction{*loan, Transaction::Mode::reading};
        known.committed(*loan, companyID); // as the last snapshot has done
    }
    Samples whole;
    Samples since;
    Samples rule;
    for (int each = 0; each < 9; ++each) {
        const Transaction transaction{*loan, Transaction::Mode::writing};
        whole.timeThread([&] { DividendRepository::state(*loan, companyID); });
        std::shared_ptr<const DividendState> state;
        since.timeThread([&] { state = known.underWay(*loan, companyID); });
        rule.timeThread([&] { decideOn(state, member); });
    }
    fmt::print("a dividend command on {} allocations, with the right to write:\n", batches);
    whole.print("  the whole section read");
    since.print("  what came since the last snapshot read");
    rule.print("  the rule");
}

}

/// What a command of a section costs while nobody else can write.
int main(int argc, char** argv)
{
    std::string folder = ".";
    CLI::App app{"Measures what a dividend command costs on sections of several sizes."};
    app.add_option("--folder", folder, "Where the database is made")->required();
    CLI11_PARSE(app, argc, argv);
    try {
        for (const int batches : {100, 1'000, 10'000})
            measure((std::filesystem::path{folder} / "sections.sqlite").string(), batches);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
