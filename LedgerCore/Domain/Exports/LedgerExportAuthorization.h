#pragma once

#include <expected>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Exports/ExportRefusal.h"
#include "LedgerCore/Domain/Exports/LedgerExportSelection.h"

/// Who saw which ledger export in a preview, with a copy of what it showed: the file is written only while all of it
/// is still so.
struct LedgerExportAuthorization {
    /// An account or member as far as the file shows it.
    struct Named {
        std::string id;
        std::string name;

        bool operator==(const Named&) const = default;
    };

    /// What the file is made of, each list in the order of the selection.
    struct Evidence {
        std::string companyName;
        std::vector<Named> accounts;
        std::vector<Named> members;
        std::vector<Category> categories;
        EntryList transactions;
        SharedList<Attachment> attachments;

        bool operator==(const Evidence&) const = default;

        static Evidence of(LedgerExportSelection selection);
    };

    std::string companyID;
    std::string userID;
    std::string memberID;
    LedgerExportScope scope;
    Evidence evidence;

    bool operator==(const LedgerExportAuthorization&) const = default;

    /// Whether the file may be written from this newer state of the books.
    [[nodiscard]] std::expected<void, ExportRefusal> validate(const LedgerSnapshot& snapshot) const;
};

/// A ledger export, ready to be confirmed and written.
struct LedgerExportRequest {
    LedgerExportAuthorization authorization;
    std::string content;
    std::string filename;
    LedgerExportPreview preview;

    static std::expected<LedgerExportRequest, ExportRefusal>
    create(const LedgerSnapshot& snapshot, const LedgerExportScope& scope, std::string_view locale);
};
