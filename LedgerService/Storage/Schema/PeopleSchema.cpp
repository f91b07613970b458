#include "LedgerService/Storage/Schema/PeopleSchema.h"

#include <array>

namespace LedgerService {

namespace {

constexpr std::array personStatements{
    R"sql(
    CREATE TABLE persons (
        id TEXT PRIMARY KEY,
        email TEXT NOT NULL UNIQUE,
        name TEXT NOT NULL,
        locale TEXT NOT NULL,
        password_hash TEXT,
        created_at TEXT NOT NULL,
        activated_at TEXT,
        deactivated_at TEXT,
        current_company_id TEXT REFERENCES companies (id)
    ) STRICT)sql",
    // A person is called as in the company that the person joined first.
    R"sql(
    INSERT INTO persons
    SELECT u.id, u.email, COALESCE(m.name, ''), COALESCE(m.locale, 'en-US'), NULLIF(u.password_hash, ''), u.created_at,
        CASE WHEN u.password_hash = '' THEN NULL ELSE u.created_at END, NULL, u.current_company_id
    FROM users u LEFT JOIN members m ON m.rowid =
        (SELECT f.rowid FROM members f WHERE f.user_id = u.id ORDER BY f.created_at, f.company_id LIMIT 1))sql",
    R"sql(
    DROP TABLE users)sql",
    R"sql(
    ALTER TABLE persons RENAME TO users)sql",
    R"sql(
    CREATE INDEX sessions_by_member ON sessions (company_id, member_id))sql",
    // `place` is a digest: the table does not say where anybody is.
    R"sql(
    CREATE TABLE known_places (
        user_id TEXT NOT NULL REFERENCES users (id),
        place TEXT NOT NULL,
        last_used_at TEXT NOT NULL,
        PRIMARY KEY (user_id, place)
    ) STRICT)sql",
};

// Codes and tickets stand as digests. A challenge without a person or an invitation can never be met: it was asked for
// with an address that nobody is registered with.
constexpr std::array correspondenceStatements{
    R"sql(
    CREATE TABLE mails (
        id TEXT PRIMARY KEY,
        recipient TEXT NOT NULL,
        locale TEXT NOT NULL,
        subject TEXT NOT NULL,
        body TEXT NOT NULL,
        created_at TEXT NOT NULL,
        expires_at TEXT NOT NULL,
        next_try_at TEXT NOT NULL,
        tries INTEGER NOT NULL
    ) STRICT)sql",
    R"sql(
    CREATE INDEX mails_by_next_try ON mails (next_try_at))sql",
    R"sql(
    CREATE TABLE access_challenges (
        id TEXT PRIMARY KEY,
        purpose TEXT NOT NULL,
        email TEXT NOT NULL,
        locale TEXT NOT NULL,
        user_id TEXT REFERENCES users (id),
        company_id TEXT,
        invitation_id TEXT,
        code_hash TEXT NOT NULL,
        tries INTEGER NOT NULL,
        ticket_hash TEXT,
        expires_at TEXT NOT NULL
    ) STRICT)sql",
    R"sql(
    CREATE INDEX access_challenges_by_expiry ON access_challenges (expires_at))sql",
    R"sql(
    CREATE INDEX access_challenges_by_email ON access_challenges (email))sql",
};

}

std::span<const char* const> PeopleSchema::persons()
{
    return personStatements;
}

std::span<const char* const> PeopleSchema::correspondence()
{
    return correspondenceStatements;
}

}
