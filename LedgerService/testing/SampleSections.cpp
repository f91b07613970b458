#include "LedgerService/testing/SampleSections.h"

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Permission.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Query.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

namespace {

std::vector<std::string> permissionsOf(std::string_view memberID)
{
    if (memberID == "mira")
        return {Permission::all.begin(), Permission::all.end()};
    if (memberID == "guest")
        return {"viewCompany", "viewCapital", "postCapital", "viewDividends", "postDividends"};
    return {};
}

std::vector<AccountGrant> grantsOf(const Member& member)
{
    auto grants = member.accountGrants.value_or(std::vector<AccountGrant>{});
    if (member.id == "guest")
        grants.push_back({"branch", {"capitalContribution", "distribution"}});
    if (member.id == "rudi")
        grants.push_back({"bank", {"view"}});
    return grants;
}

}

Books SampleSections::books()
{
    auto books = SampleBooks::books();
    books.settings->contributionsEnabled = true;
    books.settings->dividendsEnabled = true;
    for (auto& member : books.members) {
        member.permissions = permissionsOf(member.id);
        member.accountGrants = grantsOf(member);
    }
    return books;
}

BookAct SampleSections::actBy(std::string memberID, int number)
{
    auto act = SampleBooks::actBy(std::move(memberID), fmt::format("e{}", number));
    act.recordID = fmt::format("r{}", number);
    return act;
}

CapitalCommand SampleSections::capital(std::string_view action, int expectedRevision)
{
    CapitalCommand command;
    command.action = action;
    command.expectedRevision = expectedRevision;
    command.date = "2026-03-10";
    command.idempotencyKey = "key";
    return command;
}

DividendCommand SampleSections::dividend(std::string_view action, int expectedRevision)
{
    DividendCommand command;
    command.action = action;
    command.expectedRevision = expectedRevision;
    command.date = "2026-03-10";
    command.idempotencyKey = "key";
    return command;
}

CapitalCommand SampleSections::owner(std::string name, std::optional<std::string> memberID)
{
    auto command = capital(CapitalAction::setParticipant);
    command.name = std::move(name);
    command.memberID = std::move(memberID);
    return command;
}

CapitalCommand SampleSections::contribution(std::string participantID, std::int64_t amountMinor, std::string accountID,
                                            std::string currency)
{
    auto command = capital(CapitalAction::contribute);
    command.participantID = std::move(participantID);
    command.amountMinor = amountMinor;
    command.accountID = std::move(accountID);
    command.currency = std::move(currency);
    return command;
}

CapitalCommand SampleSections::ownership(std::vector<CapitalOwnershipLine> lines)
{
    auto command = capital(CapitalAction::setOwnership);
    command.ownership = std::move(lines);
    return command;
}

DividendCommand SampleSections::participant(std::string name, int ratioBps)
{
    auto command = dividend(DividendAction::setParticipant);
    command.name = std::move(name);
    command.ratioBps = ratioBps;
    return command;
}

DividendCommand SampleSections::allocation(std::int64_t amountMinor, std::vector<DividendShare> shares,
                                           std::string currency)
{
    auto command = dividend(DividendAction::allocate);
    command.period = "2026 Q1";
    command.currency = std::move(currency);
    command.amountMinor = amountMinor;
    command.shares = std::move(shares);
    return command;
}

DividendCommand SampleSections::payment(std::string batchID, std::string participantID, std::int64_t amountMinor,
                                        std::string accountID, std::string currency)
{
    auto command = advanceTo(std::move(participantID), amountMinor, std::move(accountID), std::move(currency));
    command.action = DividendAction::pay;
    command.batchID = std::move(batchID);
    return command;
}

DividendCommand SampleSections::advanceTo(std::string participantID, std::int64_t amountMinor, std::string accountID,
                                          std::string currency)
{
    auto command = dividend(DividendAction::advance);
    command.participantID = std::move(participantID);
    command.amountMinor = amountMinor;
    command.accountID = std::move(accountID);
    command.currency = std::move(currency);
    return command;
}

SectionService::SectionService()
{
    write([](Connection& connection) {
        connection.execute("UPDATE companies SET contributions_enabled = 1, dividends_enabled = 1");
        for (const auto& member : SampleSections::books().members)
            Query{connection, "UPDATE members SET permissions = :permissions, account_grants = :grants WHERE id = :id"}
                .bind("permissions", Json::encode(*member.permissions))
                .bind("grants", Json::encode(*member.accountGrants))
                .bind("id", member.id)
                .run();
    });
}

HttpAnswer SectionService::post(const std::string& memberID, const std::string& path, const std::string& body)
{
    return client().send("POST", path, keptTokenOf(memberID), body);
}

std::string SectionService::keptTokenOf(const std::string& memberID)
{
    auto& token = m_tokens[memberID];
    if (token.empty())
        token = tokenOf(memberID);
    return token;
}

CapitalState SectionService::capital()
{
    return sections().capital.value();
}

DividendState SectionService::dividends()
{
    return sections().dividends.value();
}

LedgerSnapshot SectionService::sections()
{
    auto snapshot = Json::decode<LedgerSnapshot>(client().send("GET", "/v1/snapshot", keptTokenOf("mira")).body);
    require(snapshot.has_value(), "the service sends a snapshot");
    return *std::move(snapshot);
}

HttpAnswer SectionService::send(const std::string& memberID, const CapitalCommand& command)
{
    return post(memberID, "/v1/capital/commands", Json::encode(command));
}

HttpAnswer SectionService::send(const std::string& memberID, const DividendCommand& command)
{
    return post(memberID, "/v1/dividends/commands", Json::encode(command));
}

HttpAnswer SectionService::submit(const std::string& memberID, CapitalCommand command)
{
    command.expectedRevision = capital().revision;
    command.idempotencyKey = fmt::format("capital {}", ++m_keys);
    return send(memberID, command);
}

HttpAnswer SectionService::submit(const std::string& memberID, DividendCommand command)
{
    command.expectedRevision = dividends().revision;
    command.idempotencyKey = fmt::format("dividend {}", ++m_keys);
    return send(memberID, command);
}

std::string SectionService::added(CapitalCommand command)
{
    const auto action = command.action;
    const auto answer = submit("mira", std::move(command));
    require(answer.status == 200, answer.body);
    const auto state = capital();
    if (action == CapitalAction::setParticipant)
        return state.participants.back().id;
    if (action == CapitalAction::setBaseline)
        return state.baselines.back().id;
    return action == CapitalAction::setOwnership ? state.ownershipVersions.back().id : state.contributions.back().id;
}

std::string SectionService::added(DividendCommand command)
{
    const auto action = command.action;
    const auto answer = submit("mira", std::move(command));
    require(answer.status == 200, answer.body);
    const auto state = dividends();
    if (action == DividendAction::setParticipant)
        return state.participants.back().id;
    return action == DividendAction::allocate ? state.batches.back().id : state.movements.back().id;
}

}
