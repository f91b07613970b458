#include "LedgerService/Storage/Sql/Dialect.h"

#include <array>
#include <utility>

namespace LedgerService {

namespace {

constexpr Dialect sqlite{.engine = Dialect::Engine::sqlite,
                         .beginReading = "BEGIN",
                         .beginWriting = "BEGIN IMMEDIATE",
                         .beginMaking = "BEGIN IMMEDIATE"};

// The level of a writer is the database's own, so that engines with one level only are understood too. Whoever writes
// the one row of `writing_turn` is the only writer until the transaction ends.
constexpr Dialect postgresql{.engine = Dialect::Engine::postgresql,
                             .beginReading = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY",
                             .beginWriting = "BEGIN; UPDATE writing_turn SET taken = taken + 1",
                             .beginMaking = "BEGIN"};

constexpr auto schemes = std::to_array<std::string_view>({"postgresql://", "postgres://"});

/// Whole numbers have 64 bits everywhere, and texts sort by their bytes.
constexpr auto types = std::to_array<std::pair<std::string_view, std::string_view>>(
    {{" INTEGER", " BIGINT"}, {" TEXT", R"( TEXT COLLATE "C")"}});

void replaceAll(std::string& text, std::string_view what, std::string_view by)
{
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

/// Takes the value of "password=…" out of an address.
void hidePassword(std::string& address)
{
    constexpr std::string_view parameter = "password=";
    for (auto at = address.find(parameter); at != std::string::npos; at = address.find(parameter, at)) {
        at += parameter.size();
        address.erase(at, address.find('&', at) - at);
    }
}

}

const Dialect& Dialect::of(std::string_view database)
{
    return DatabaseName::isAddress(database) ? postgresql : sqlite;
}

std::string Dialect::making(std::string_view statement) const
{
    std::string text{statement};
    if (isFile())
        return text;
    for (const auto& [known, own] : types)
        replaceAll(text, known, own);
    if (text.find("CREATE TABLE") != std::string::npos)
        text.resize(text.rfind(')') + 1); // how a file lays out its rows follows
    return text;
}

bool DatabaseName::isAddress(std::string_view database)
{
    for (const auto scheme : schemes) {
        if (database.starts_with(scheme))
            return true;
    }
    return false;
}

std::string DatabaseName::shown(std::string_view database)
{
    std::string text{database};
    if (!isAddress(database))
        return text;
    hidePassword(text);
    const auto begin = text.find("//") + 2;
    const auto authority = text.substr(begin, text.find_first_of("/?", begin) - begin);
    const auto end = authority.rfind('@');
    const auto colon = authority.find(':');
    if (end != std::string::npos && colon < end)
        text.erase(begin + colon, end - colon);
    return text;
}

}
