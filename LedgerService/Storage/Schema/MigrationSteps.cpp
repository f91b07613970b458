#include "LedgerService/Storage/Schema/MigrationSteps.h"

#include <array>

#include "LedgerService/Storage/Schema/AuditStep.h"
#include "LedgerService/Storage/Schema/CapitalSchema.h"
#include "LedgerService/Storage/Schema/CompanyKeyStep.h"
#include "LedgerService/Storage/Schema/CompanyRequestSchema.h"
#include "LedgerService/Storage/Schema/DemoVisitSchema.h"
#include "LedgerService/Storage/Schema/DraftSchema.h"
#include "LedgerService/Storage/Schema/InvitationSchema.h"
#include "LedgerService/Storage/Schema/KeyedTablesStep.h"
#include "LedgerService/Storage/Schema/PeopleSchema.h"
#include "LedgerService/Storage/Schema/ReceiptFileStep.h"
#include "LedgerService/Storage/Schema/ReceiptOrderStep.h"
#include "LedgerService/Storage/Schema/StrictTables.h"
#include "LedgerService/Storage/Schema/TemplateSchema.h"

namespace LedgerService {

namespace {

// Lists and maps that are only ever read whole stand as JSON texts. Flags are 0 or 1, stamps and days are texts that
// sort in the order of time, amounts are minor units.
constexpr std::array firstSchema{
    R"sql(
    CREATE TABLE companies (
        id TEXT PRIMARY KEY,
        name TEXT NOT NULL,
        countries TEXT NOT NULL,
        enabled_locales TEXT NOT NULL,
        created_at TEXT NOT NULL,
        approval_status TEXT,
        transaction_colors TEXT,
        demo_version INTEGER,
        demo_locale TEXT UNIQUE,
        last_sequence BIGINT NOT NULL,
        settings_revision INTEGER NOT NULL,
        contributions_enabled INTEGER NOT NULL,
        dividends_enabled INTEGER NOT NULL,
        bookkeeping_start_date TEXT,
        initialization_mode TEXT,
        initialized_at TEXT,
        features_configured INTEGER
    ))sql",
    R"sql(
    CREATE TABLE users (
        id TEXT PRIMARY KEY,
        email TEXT NOT NULL UNIQUE,
        password_hash TEXT NOT NULL,
        created_at TEXT NOT NULL,
        current_company_id TEXT REFERENCES companies (id)
    ))sql",
    R"sql(
    CREATE TABLE members (
        company_id TEXT NOT NULL REFERENCES companies (id),
        id TEXT NOT NULL,
        user_id TEXT NOT NULL REFERENCES users (id),
        position INTEGER NOT NULL,
        name TEXT NOT NULL,
        role TEXT NOT NULL,
        account_ids TEXT NOT NULL,
        locale TEXT NOT NULL,
        active INTEGER NOT NULL,
        permissions TEXT,
        account_grants TEXT,
        selected_category_ids TEXT,
        transaction_colors TEXT,
        demo_profile TEXT,
        created_at TEXT NOT NULL,
        PRIMARY KEY (company_id, id),
        UNIQUE (user_id, company_id)
    ))sql",
    R"sql(
    CREATE TABLE accounts (
        company_id TEXT NOT NULL REFERENCES companies (id),
        id TEXT NOT NULL,
        position INTEGER NOT NULL,
        name TEXT NOT NULL,
        currencies TEXT NOT NULL,
        owner_member_id TEXT,
        operator_member_id TEXT,
        purpose TEXT,
        return_account_id TEXT,
        archived INTEGER NOT NULL,
        PRIMARY KEY (company_id, id)
    ))sql",
    R"sql(
    CREATE TABLE balances (
        company_id TEXT NOT NULL,
        account_id TEXT NOT NULL,
        currency TEXT NOT NULL,
        amount_minor BIGINT NOT NULL,
        PRIMARY KEY (company_id, account_id, currency),
        FOREIGN KEY (company_id, account_id) REFERENCES accounts (company_id, id)
    ))sql",
    R"sql(
    CREATE TABLE categories (
        company_id TEXT NOT NULL REFERENCES companies (id),
        id TEXT NOT NULL,
        position INTEGER NOT NULL,
        kind TEXT NOT NULL,
        names TEXT NOT NULL,
        symbol TEXT NOT NULL,
        archived INTEGER NOT NULL,
        parent_id TEXT,
        sort_order INTEGER,
        preset_id TEXT,
        default_enabled INTEGER,
        PRIMARY KEY (company_id, id)
    ))sql",
    // An entry row is written once. What undid it is the one row that names it in `reversal_of`.
    R"sql(
    CREATE TABLE entries (
        company_id TEXT NOT NULL REFERENCES companies (id),
        sequence BIGINT NOT NULL,
        id TEXT NOT NULL,
        kind TEXT NOT NULL,
        date TEXT NOT NULL,
        note TEXT NOT NULL,
        created_at TEXT NOT NULL,
        member_id TEXT NOT NULL,
        category_id TEXT,
        reversal_of TEXT,
        original_transaction_id TEXT,
        external_reference TEXT,
        transfer_purpose TEXT,
        distribution_kind TEXT,
        participant_name TEXT,
        dividend_movement_id TEXT,
        capital_contribution_id TEXT,
        PRIMARY KEY (company_id, sequence),
        UNIQUE (company_id, id),
        UNIQUE (company_id, reversal_of),
        FOREIGN KEY (company_id, member_id) REFERENCES members (company_id, id)
    ))sql",
    R"sql(
    CREATE INDEX entries_by_original ON entries (company_id, original_transaction_id)
        WHERE original_transaction_id IS NOT NULL)sql",
    R"sql(
    CREATE INDEX refunds_by_reference ON entries (company_id, external_reference)
        WHERE kind = 'refund' AND external_reference IS NOT NULL)sql",
    R"sql(
    CREATE TABLE legs (
        company_id TEXT NOT NULL,
        sequence BIGINT NOT NULL,
        position INTEGER NOT NULL,
        account_id TEXT NOT NULL,
        currency TEXT NOT NULL,
        amount_minor BIGINT NOT NULL,
        opening INTEGER NOT NULL,
        PRIMARY KEY (company_id, sequence, position),
        FOREIGN KEY (company_id, sequence) REFERENCES entries (company_id, sequence),
        FOREIGN KEY (company_id, account_id) REFERENCES accounts (company_id, id)
    ))sql",
    R"sql(
    CREATE INDEX legs_by_account ON legs (company_id, account_id, sequence))sql",
    R"sql(
    CREATE INDEX opening_legs ON legs (company_id, account_id, currency) WHERE opening = 1)sql",
    R"sql(
    CREATE TABLE attachments (
        company_id TEXT NOT NULL REFERENCES companies (id),
        id TEXT NOT NULL,
        member_id TEXT NOT NULL,
        transaction_id TEXT,
        position INTEGER NOT NULL,
        name TEXT NOT NULL,
        mime TEXT NOT NULL,
        byte_count BIGINT NOT NULL,
        created_at TEXT NOT NULL,
        PRIMARY KEY (company_id, id),
        FOREIGN KEY (company_id, transaction_id) REFERENCES entries (company_id, id)
    ))sql",
    R"sql(
    CREATE INDEX attachments_by_entry ON attachments (company_id, transaction_id))sql",
    R"sql(
    CREATE TABLE sessions (
        token_hash TEXT PRIMARY KEY,
        company_id TEXT NOT NULL,
        member_id TEXT NOT NULL,
        created_at TEXT NOT NULL,
        expires_at TEXT NOT NULL,
        revoked_at TEXT,
        FOREIGN KEY (company_id, member_id) REFERENCES members (company_id, id)
    ))sql",
    R"sql(
    CREATE INDEX sessions_by_expiry ON sessions (expires_at))sql",
    R"sql(
    CREATE TABLE commands (
        company_id TEXT NOT NULL,
        member_id TEXT NOT NULL,
        idempotency_key TEXT NOT NULL,
        fingerprint TEXT NOT NULL,
        outcome TEXT NOT NULL,
        created_at TEXT NOT NULL,
        PRIMARY KEY (company_id, member_id, idempotency_key)
    ))sql",
    R"sql(
    CREATE TABLE attempts (
        scope TEXT PRIMARY KEY,
        window_ends_at TEXT NOT NULL,
        count INTEGER NOT NULL
    ))sql",
};

// Each entry stands once more as it is sent. `entry_fragments.key` is the company's number above the entry's sequence:
// a company's fragments lie together in the order of recording.
constexpr std::array fragments{
    R"sql(
    ALTER TABLE companies ADD COLUMN number INTEGER)sql",
    R"sql(
    UPDATE companies SET number = (SELECT COUNT(*) FROM companies earlier WHERE earlier.id <= companies.id))sql",
    R"sql(
    CREATE UNIQUE INDEX companies_by_number ON companies (number))sql",
    R"sql(
    ALTER TABLE companies ADD COLUMN fragments_shape TEXT NOT NULL DEFAULT '')sql",
    R"sql(
    CREATE TABLE account_sets (
        company_id TEXT NOT NULL REFERENCES companies (id),
        id INTEGER NOT NULL,
        account_ids TEXT NOT NULL,
        entry_count BIGINT NOT NULL,
        receipt_count BIGINT NOT NULL,
        PRIMARY KEY (company_id, id),
        UNIQUE (company_id, account_ids)
    ))sql",
    R"sql(
    CREATE TABLE entry_fragments (
        key INTEGER PRIMARY KEY,
        account_set INTEGER NOT NULL,
        text TEXT NOT NULL
    ))sql",
    R"sql(
    CREATE TABLE entry_renewals (
        company_id TEXT NOT NULL,
        change BIGINT NOT NULL,
        sequence BIGINT NOT NULL,
        text_before TEXT NOT NULL,
        PRIMARY KEY (company_id, change, sequence),
        FOREIGN KEY (company_id, sequence) REFERENCES entries (company_id, sequence)
    ))sql",
    // 0: uploaded before changes were counted, or not linked yet.
    R"sql(
    ALTER TABLE attachments ADD COLUMN uploaded_change BIGINT NOT NULL DEFAULT 0)sql",
    R"sql(
    ALTER TABLE attachments ADD COLUMN linked_change BIGINT NOT NULL DEFAULT 0)sql",
    R"sql(
    ALTER TABLE attachments ADD COLUMN account_set INTEGER NOT NULL DEFAULT 0)sql", // of the entry
    R"sql(
    UPDATE attachments SET linked_change = (
        SELECT e.sequence FROM entries e
        WHERE e.company_id = attachments.company_id AND e.id = attachments.transaction_id)
    WHERE transaction_id IS NOT NULL)sql",
    R"sql(
    UPDATE attachments SET uploaded_change = linked_change)sql",
    R"sql(
    CREATE INDEX attachments_by_upload ON attachments (company_id, member_id, uploaded_change))sql",
    R"sql(
    CREATE INDEX attachments_by_link ON attachments (company_id, linked_change))sql",
    R"sql(
    CREATE INDEX loose_attachments ON attachments (company_id, member_id) WHERE linked_change = 0)sql",
};

// Attempts are swept by their end. A company's day is that of its time zone; without one, of the machine's. Of what a
// command that recorded an entry led to, the entry's id is kept.
constexpr std::array strictness{
    R"sql(
    CREATE INDEX attempts_by_end ON attempts (window_ends_at))sql",
    R"sql(
    ALTER TABLE companies ADD COLUMN time_zone TEXT)sql",
    R"sql(
    UPDATE commands SET outcome = 'entry:' ||
        CASE WHEN substr(outcome, 1, 1) = '{' THEN json_extract(outcome, '$.id') ELSE outcome END)sql",
};

// References of refunds are compared without regard to case.
/// Beside the company's counter, so that asking for it looks at no entries.
constexpr std::array earliestDays{
    R"sql(
    ALTER TABLE companies ADD COLUMN earliest_day TEXT)sql",
    R"sql(
    UPDATE companies SET earliest_day = (SELECT MIN(date) FROM entries WHERE company_id = companies.id))sql",
};

constexpr std::array foldedReferences{
    R"sql(
    DROP INDEX refunds_by_reference)sql",
    R"sql(
    CREATE INDEX refunds_by_folded_reference ON entries (company_id, lower(external_reference))
        WHERE kind = 'refund' AND external_reference IS NOT NULL)sql",
};

}

// Tables of later steps say STRICT themselves.
std::span<const MigrationSteps::Step> MigrationSteps::all()
{
    static const std::array steps{
        Step{firstSchema},
        Step{fragments},
        Step{strictness, StrictTables::makeAll},
        Step{foldedReferences},
        Step{PeopleSchema::persons()},
        Step{receiptFileStep},
        Step{InvitationSchema::statements},
        Step{auditStep},
        Step{PeopleSchema::correspondence()},
        Step{CapitalSchema::tables()},
        Step{CompanyRequestSchema::statements},
        Step{earliestDays},
        Step{{}, DemoVisitSchema::apply},
        Step{CompanyKeyStep::statements, CompanyKeyStep::drawKeys},
        Step{{}, KeyedTablesStep::apply},
        Step{TemplateSchema::statements},
        Step{DraftSchema::statements},
        Step{receiptOrderStep},
    };
    return steps;
}

}
