#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace LedgerService {

class Connection;

/// Where a scope's audit trail stood at the end of a day.
struct SealedTrail {
    std::string scope;
    std::int64_t number = 0;
    std::string chain;

    bool operator==(const SealedTrail&) const = default;
};

/// The file of one day. Copied to a place that whoever can change the database cannot reach, it proves what the trails
/// were on that day.
struct AuditSeal {
    std::string day;
    std::string previous; // the digest of the file before; empty for the first
    std::vector<SealedTrail> trails;

    bool operator==(const AuditSeal&) const = default;
};

/// The folder of seals beside the database.
class AuditSeals {
public:
    explicit AuditSeals(const std::string& beside);

    /// Writes the seal of the day before this stamp, unless it is there. Whether it was written now; throws when it
    /// cannot be.
    bool sealDayBefore(Connection& connection, const std::string& stamp) const;

    /// Everything in which the seals do not follow from each other or the trails differ from them, in words.
    [[nodiscard]] std::vector<std::string> broken(Connection& connection) const;

    /// The names of the files, the earliest first.
    [[nodiscard]] std::vector<std::string> names() const;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

}
