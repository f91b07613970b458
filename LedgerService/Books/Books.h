#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerCore/Domain/Records/Category.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerService/Books/CapitalRows.h"
#include "LedgerService/Books/DividendRows.h"
#include "LedgerService/Books/EntryChange.h"
#include "LedgerService/Books/PostingRows.h"
#include "LedgerService/Books/ReversalRows.h"

namespace LedgerService {

/// Who does something to the books, and when.
struct BookAct {
    std::string entryID; // for the entry to append
    std::string memberID;
    std::string today;         // "YYYY-MM-DD"
    std::string now;           // stamp of recording
    std::string recordID = {}; // for what comes to stand in the capital or dividend section
};

/// One company's books in memory, whole. The service keeps them in its database; this form serves checks of all that is
/// recorded, and generated books.
struct Books {
    std::vector<Member> members;
    std::vector<Account> accounts;
    std::vector<Category> categories;
    std::vector<LedgerTransaction> entries; // in the order of recording
    std::vector<Attachment> attachments;
    std::optional<FinancialSettings> settings;
    std::vector<CapitalChange> capitalChanges; // in the order of their revisions
    std::vector<DividendChange> dividendChanges;

    bool operator==(const Books&) const = default;

    [[nodiscard]] const Account* account(std::string_view id) const;
    [[nodiscard]] const LedgerTransaction* entry(std::string_view id) const;

    /// The rows that the command names. The acting member is one of `members`.
    [[nodiscard]] PostingRows rowsOf(const TransactionInput& input, const BookAct& act) const;
    [[nodiscard]] ReversalRows rowsOf(std::string_view originalID, const BookAct& act) const;
    [[nodiscard]] CapitalRows rowsOf(const CapitalCommand& command, const BookAct& act) const;
    [[nodiscard]] DividendRows rowsOf(const DividendCommand& command, const BookAct& act) const;

    /// Decides the command and applies what was decided; the recorded entry is the last of `entries`.
    std::expected<void, Refusal> record(const TransactionInput& input, const BookAct& act);
    std::expected<void, Refusal> reverse(std::string_view originalID, const Reversal& command, const BookAct& act);
    std::expected<void, Refusal> submit(const CapitalCommand& command, const BookAct& act);
    std::expected<void, Refusal> submit(const DividendCommand& command, const BookAct& act);

    void apply(const EntryChange& change);

private:
    [[nodiscard]] SectionRows sectionRows(const BookAct& act, const std::optional<std::string>& accountID,
                                          const std::optional<std::string>& originalEntryID,
                                          const std::optional<std::vector<std::string>>& attachmentIDs) const;
};

}
