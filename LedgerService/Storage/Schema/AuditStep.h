#pragma once

#include <array>

namespace LedgerService {

/// The audit trail: rows are added and neither changed nor removed, except with the company that they are about. A
/// scope is a company's id, or empty for what concerns no company. Of entries that were recorded before, or with their
/// company, nothing is told: `audited_from` is the last change of that time.
inline constexpr std::array auditStep{
    R"sql(
    CREATE TABLE audit_records (
        scope TEXT NOT NULL,
        number INTEGER NOT NULL,
        at TEXT NOT NULL,
        member_id TEXT,
        origin TEXT NOT NULL,
        kind TEXT NOT NULL,
        record TEXT,
        digest TEXT,
        state_before TEXT,
        state_after TEXT,
        chain TEXT NOT NULL,
        PRIMARY KEY (scope, number)
    ) STRICT, WITHOUT ROWID)sql",
    R"sql(
    CREATE TRIGGER audit_records_stay BEFORE UPDATE ON audit_records
    BEGIN SELECT RAISE(ABORT, 'the audit trail is only added to'); END)sql",
    R"sql(
    CREATE TRIGGER audit_records_last BEFORE DELETE ON audit_records
    WHEN OLD.scope = '' OR EXISTS (SELECT 1 FROM companies WHERE id = OLD.scope)
    BEGIN SELECT RAISE(ABORT, 'the audit trail is only added to'); END)sql",
    R"sql(
    ALTER TABLE companies ADD COLUMN audited_from INTEGER NOT NULL DEFAULT 0)sql",
    R"sql(
    UPDATE companies SET audited_from = last_sequence)sql",
};

/// What keeps the trail where the engine's triggers call functions.
struct AuditGuard {
    const char* kind;
    const char* name;
    const char* statement;
};
inline constexpr std::array auditGuards{
    AuditGuard{"function", "audit_records_kept", R"sql(
    CREATE FUNCTION audit_records_kept() RETURNS trigger LANGUAGE plpgsql AS $body$
    BEGIN
        IF TG_OP = 'DELETE' AND OLD.scope <> '' AND NOT EXISTS (SELECT 1 FROM companies WHERE id = OLD.scope) THEN
            RETURN OLD;
        END IF;
        RAISE EXCEPTION 'the audit trail is only added to';
    END $body$)sql"},
    AuditGuard{"trigger", "audit_records_stay", R"sql(
    CREATE TRIGGER audit_records_stay BEFORE UPDATE ON audit_records
    FOR EACH ROW EXECUTE FUNCTION audit_records_kept())sql"},
    AuditGuard{"trigger", "audit_records_last", R"sql(
    CREATE TRIGGER audit_records_last BEFORE DELETE ON audit_records
    FOR EACH ROW EXECUTE FUNCTION audit_records_kept())sql"},
};

}
