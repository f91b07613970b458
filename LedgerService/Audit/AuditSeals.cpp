#include "LedgerService/Audit/AuditSeals.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <boost/describe.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Audit/AuditTrail.h"
#include "LedgerService/DurableFile.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Query.h"

namespace LedgerService {

BOOST_DESCRIBE_STRUCT(SealedTrail, (), (scope, number, chain))
BOOST_DESCRIBE_STRUCT(AuditSeal, (), (day, previous, trails))

namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".seal";
constexpr std::size_t dayLength = 10; // of "2026-11-20"

constexpr auto selectChain = R"sql(
    SELECT chain FROM audit_records WHERE scope = :scope AND number = :number
)sql";

/// Demonstrations come and go, and with them what is told of them; what is still arriving may never be whole.
constexpr auto selectPassing = R"sql(
    SELECT 1 FROM companies WHERE id = :company AND (demo_version IS NOT NULL OR approval_status LIKE 'arriving %')
)sql";

bool isPassing(Connection& connection, const std::string& companyID)
{
    int one = 0;
    return Query{connection, selectPassing}.bind("company", companyID).into(one).next();
}

std::string contentOf(const fs::path& file)
{
    std::ifstream in{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
}

}

AuditSeals::AuditSeals(const std::string& beside) : m_path(beside + "-seals") {}

std::vector<std::string> AuditSeals::names() const
{
    std::vector<std::string> names;
    std::error_code failure;
    for (fs::directory_iterator each{m_path, failure}, end; !failure && each != end; each.increment(failure)) {
        if (each->path().extension() == ending && !DurableFile::isUnfinished(each->path()))
            names.push_back(each->path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

bool AuditSeals::sealDayBefore(Connection& connection, const std::string& stamp) const
{
    const auto instant = LedgerDay::parseStamp(stamp);
    if (!instant)
        throw std::runtime_error("a stamp is none");
    const auto today = stamp.substr(0, dayLength);
    const auto day = LedgerDay::stamp(*instant - std::chrono::hours{24}).substr(0, dayLength);
    const auto sealed = names();
    const auto name = day + std::string{ending};
    if (!sealed.empty() && sealed.back() >= name)
        return false;
    AuditSeal seal{.day = day, .previous = {}, .trails = {}};
    if (!sealed.empty())
        seal.previous = Random::shortDigest(contentOf(m_path / sealed.back()));
    for (const auto& scope : AuditTrail::scopes(connection)) {
        if (const auto last = AuditTrail::lastUpTo(connection, scope, today); last && !isPassing(connection, scope))
            seal.trails.push_back({scope, last->number, last->chain});
    }
    auto failure = DurableFile::makeFolder(m_path);
    if (!failure)
        failure = DurableFile::write(m_path / name, Json::encode(seal), DurableFile::Existing::kept);
    if (failure == std::errc::file_exists) // another process was quicker
        return false;
    if (failure)
        throw std::runtime_error(fmt::format("the seal of {} cannot be written: {}", day, failure.message()));
    return true;
}

std::vector<std::string> AuditSeals::broken(Connection& connection) const
{
    std::vector<std::string> found;
    std::string previous;
    for (const auto& name : names()) {
        const auto content = contentOf(m_path / name);
        const auto seal = Json::decode<AuditSeal>(content);
        if (!seal) {
            found.push_back(fmt::format("seal {}: cannot be read", name));
            continue;
        }
        if (seal->previous != previous || seal->day + std::string{ending} != name)
            found.push_back(fmt::format("seal {}: does not follow the one before", name));
        for (const auto& each : seal->trails) {
            std::string chain;
            Query{connection, selectChain}.bind("scope", each.scope).bind("number", each.number).into(chain).next();
            if (chain != each.chain)
                found.push_back(fmt::format("company {}: audit record {}: is not the one of seal {}", each.scope,
                                            each.number, name));
        }
        previous = Random::shortDigest(content);
    }
    return found;
}

}
