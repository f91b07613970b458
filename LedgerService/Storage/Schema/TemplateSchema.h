#pragma once

#include <array>

namespace LedgerService {

/// Templates of entries, and what people did about their due days. Those that were taken away stay for the days on
/// which somebody still has their form open.
namespace TemplateSchema {

inline constexpr std::array statements{
    R"sql(
    CREATE TABLE entry_templates (
        company_id TEXT NOT NULL REFERENCES companies (id),
        id TEXT NOT NULL,
        position INTEGER NOT NULL,
        member_id TEXT NOT NULL,
        name TEXT NOT NULL,
        shared INTEGER NOT NULL,
        entry TEXT NOT NULL,
        recurrence TEXT,
        revision INTEGER NOT NULL,
        created_at TEXT NOT NULL,
        removed_at TEXT,
        PRIMARY KEY (company_id, id),
        FOREIGN KEY (company_id, member_id) REFERENCES members (company_id, id)
    ) STRICT)sql",
    // Without an entry the day was skipped.
    R"sql(
    CREATE TABLE template_days (
        company_id TEXT NOT NULL,
        template_id TEXT NOT NULL,
        day TEXT NOT NULL,
        member_id TEXT NOT NULL,
        entry_id TEXT,
        settled_at TEXT NOT NULL,
        PRIMARY KEY (company_id, template_id, day),
        FOREIGN KEY (company_id, template_id) REFERENCES entry_templates (company_id, id),
        FOREIGN KEY (company_id, entry_id) REFERENCES entries (company_id, id)
    ) STRICT)sql",
};

}

}
