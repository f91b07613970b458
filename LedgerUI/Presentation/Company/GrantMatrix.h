#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Company/MemberAccess.h"

/// One cell of the matrix of rights: an account and an action.
struct GrantCell {
    bool isGranted = false;
    bool isMeaningful = true; // else it takes no new grant
    QString whyNot = {};      // in words, where it cannot be changed; empty when it can
    QString spoken = {};

    [[nodiscard]] bool mayChange() const { return whyNot.isEmpty(); }
    bool operator==(const GrantCell&) const = default;
};

struct GrantRow {
    std::string accountID;
    QString account;
    std::vector<GrantCell> cells; // in the order of `AccountGrant::knownActions`

    bool operator==(const GrantRow&) const = default;
};

/// The rights by account: a row for each account in use, and for each archived one on which something is granted.
namespace GrantMatrix {

std::vector<QString> heads(std::string_view locale);

std::vector<GrantRow> rows(const Member& saved, const AccessDraft& draft, const LedgerSnapshot& snapshot,
                           std::string_view locale);

/// The draft after a press on one cell, on a whole row or on a whole column. A row or column of which something is not
/// granted yet is granted as a whole, else taken; what cannot be changed stays.
AccessDraft toggled(const AccessDraft& draft, const std::vector<GrantRow>& rows, std::size_t row, std::size_t column);
AccessDraft rowToggled(const AccessDraft& draft, const std::vector<GrantRow>& rows, std::size_t row);
AccessDraft columnToggled(const AccessDraft& draft, const std::vector<GrantRow>& rows, std::size_t column);

}
