#include "LedgerService/Storage/Schema/CapitalSchema.h"

#include <array>

namespace LedgerService {

namespace {

constexpr std::array statements{
    R"sql(
    CREATE TABLE capital_changes (
        company_id TEXT NOT NULL REFERENCES companies (id),
        revision INTEGER NOT NULL,
        action TEXT NOT NULL,
        date TEXT NOT NULL,
        note TEXT NOT NULL,
        member_id TEXT NOT NULL,
        created_at TEXT NOT NULL,
        PRIMARY KEY (company_id, revision),
        FOREIGN KEY (company_id, member_id) REFERENCES members (company_id, id)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE capital_participants (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        id TEXT NOT NULL,
        name TEXT NOT NULL,
        member_id TEXT,
        archived INTEGER NOT NULL,
        PRIMARY KEY (company_id, revision),
        FOREIGN KEY (company_id, revision) REFERENCES capital_changes (company_id, revision)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE capital_contributions (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        id TEXT NOT NULL,
        participant_id TEXT NOT NULL,
        participant_name TEXT NOT NULL,
        currency TEXT NOT NULL,
        amount_minor INTEGER NOT NULL,
        transaction_id TEXT NOT NULL,
        reversal_of TEXT,
        PRIMARY KEY (company_id, revision),
        UNIQUE (company_id, id),
        UNIQUE (company_id, transaction_id),
        UNIQUE (company_id, reversal_of),
        FOREIGN KEY (company_id, revision) REFERENCES capital_changes (company_id, revision),
        FOREIGN KEY (company_id, transaction_id) REFERENCES entries (company_id, id),
        FOREIGN KEY (company_id, reversal_of) REFERENCES capital_contributions (company_id, id)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE capital_baselines (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        id TEXT NOT NULL,
        currency TEXT NOT NULL,
        through_date TEXT NOT NULL,
        entries TEXT NOT NULL,
        replaces_id TEXT,
        PRIMARY KEY (company_id, revision),
        UNIQUE (company_id, id),
        UNIQUE (company_id, replaces_id),
        FOREIGN KEY (company_id, revision) REFERENCES capital_changes (company_id, revision),
        FOREIGN KEY (company_id, replaces_id) REFERENCES capital_baselines (company_id, id)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE capital_ownership_versions (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        id TEXT NOT NULL,
        entries TEXT NOT NULL,
        PRIMARY KEY (company_id, revision),
        UNIQUE (company_id, id),
        FOREIGN KEY (company_id, revision) REFERENCES capital_changes (company_id, revision)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE capital_visibility (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        shown INTEGER NOT NULL,
        PRIMARY KEY (company_id, revision),
        FOREIGN KEY (company_id, revision) REFERENCES capital_changes (company_id, revision)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE dividend_changes (
        company_id TEXT NOT NULL REFERENCES companies (id),
        revision INTEGER NOT NULL,
        action TEXT NOT NULL,
        date TEXT NOT NULL,
        note TEXT NOT NULL,
        member_id TEXT NOT NULL,
        created_at TEXT NOT NULL,
        PRIMARY KEY (company_id, revision),
        FOREIGN KEY (company_id, member_id) REFERENCES members (company_id, id)
    ) STRICT)sql",
    // One change may fill the ratios of several participants.
    R"sql(
    CREATE TABLE dividend_participants (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        position INTEGER NOT NULL,
        id TEXT NOT NULL,
        name TEXT NOT NULL,
        member_id TEXT,
        ratio_bps INTEGER NOT NULL,
        archived INTEGER NOT NULL,
        PRIMARY KEY (company_id, revision, position),
        FOREIGN KEY (company_id, revision) REFERENCES dividend_changes (company_id, revision)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE dividend_batches (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        id TEXT NOT NULL,
        period TEXT NOT NULL,
        currency TEXT NOT NULL,
        amount_minor INTEGER NOT NULL,
        lines TEXT NOT NULL,
        PRIMARY KEY (company_id, revision),
        UNIQUE (company_id, id),
        FOREIGN KEY (company_id, revision) REFERENCES dividend_changes (company_id, revision)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE dividend_cancellations (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        batch_id TEXT NOT NULL,
        PRIMARY KEY (company_id, revision),
        UNIQUE (company_id, batch_id),
        FOREIGN KEY (company_id, revision) REFERENCES dividend_changes (company_id, revision),
        FOREIGN KEY (company_id, batch_id) REFERENCES dividend_batches (company_id, id)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE dividend_movements (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        id TEXT NOT NULL,
        kind TEXT NOT NULL,
        participant_id TEXT NOT NULL,
        currency TEXT NOT NULL,
        amount_minor INTEGER NOT NULL,
        batch_id TEXT,
        advance_id TEXT,
        transaction_id TEXT,
        reversal_of TEXT,
        PRIMARY KEY (company_id, revision),
        UNIQUE (company_id, id),
        UNIQUE (company_id, transaction_id),
        UNIQUE (company_id, reversal_of),
        FOREIGN KEY (company_id, revision) REFERENCES dividend_changes (company_id, revision),
        FOREIGN KEY (company_id, transaction_id) REFERENCES entries (company_id, id),
        FOREIGN KEY (company_id, batch_id) REFERENCES dividend_batches (company_id, id),
        FOREIGN KEY (company_id, advance_id) REFERENCES dividend_movements (company_id, id),
        FOREIGN KEY (company_id, reversal_of) REFERENCES dividend_movements (company_id, id)
    ) STRICT)sql",
    R"sql(
    CREATE TABLE dividend_visibility (
        company_id TEXT NOT NULL,
        revision INTEGER NOT NULL,
        shown INTEGER NOT NULL,
        PRIMARY KEY (company_id, revision),
        FOREIGN KEY (company_id, revision) REFERENCES dividend_changes (company_id, revision)
    ) STRICT)sql",
};

}

std::span<const char* const> CapitalSchema::tables()
{
    return statements;
}

}
