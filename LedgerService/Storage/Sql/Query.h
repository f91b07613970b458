#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

class Connection;

/// One run of a statement: bind its named parameters, name where its columns go, then take the rows.
/// The same statement is not run again before this object is gone.
class Query {
public:
    Query(Connection& connection, std::string_view sql);
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    Query& bind(std::string_view name, std::string_view value);
    Query& bind(std::string_view name, const std::string& value) { return bind(name, std::string_view{value}); }
    Query& bind(std::string_view name, const char* value) { return bind(name, std::string_view{value}); }
    Query& bind(std::string_view name, const std::optional<std::string>& value);
    Query& bind(std::string_view name, const std::optional<int>& value);
    Query& bind(std::string_view name, const std::optional<bool>& value)
    {
        return bind(name, value ? std::optional<int>{*value} : std::nullopt);
    }
    Query& bind(std::string_view name, std::int64_t value);
    Query& bind(std::string_view name, int value) { return bind(name, std::int64_t{value}); }
    Query& bind(std::string_view name, bool value) { return bind(name, std::int64_t{value}); }

    /// The next column goes to `target`, which must live as long as rows are taken. Null leaves plain targets empty.
    Query& into(std::string& target);
    Query& into(std::optional<std::string>& target);
    Query& into(std::optional<int>& target);
    Query& into(std::optional<bool>& target);
    Query& into(std::int64_t& target);
    Query& into(int& target);
    Query& into(bool& target);

    /// Fills the targets from the next row; false when there is none left.
    bool next();

    /// Runs a statement that changes rows; how many it changed.
    std::int64_t run();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

}
