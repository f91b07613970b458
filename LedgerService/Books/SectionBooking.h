#pragma once

#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/Account.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerCore/Domain/Records/FinancialSettings.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerCore/Domain/Records/Requests/SectionChange.h"
#include "LedgerService/Books/EntryChange.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// The rows that a change of capital or dividends looks at beside its section, found within the member's company.
struct SectionRows {
    std::string recordID; // for what is added to the section
    std::string entryID;  // for the entry that books its money
    std::string today;    // the company's day, "YYYY-MM-DD"
    std::string now;      // stamp of recording
    Member member;        // who changes the section
    std::vector<Member> members;
    std::vector<Account> accounts;             // the one that the command names, and those of `original`
    std::optional<LedgerTransaction> original; // the entry of the money that a "reverse" undoes
    std::vector<Attachment> attachments;       // those of the command that exist
    std::optional<FinancialSettings> settings;

    [[nodiscard]] SectionStamp stamp() const { return {recordID, entryID, member.id, now}; }
    /// The account that the original's money moved on, when there is one.
    [[nodiscard]] std::optional<std::string_view> originalAccountID() const;
};

/// The texts and receipts that a command of either section carries.
struct SectionTexts {
    const std::optional<std::string>& name;
    const std::optional<std::string>& note;
    const std::optional<std::string>& period;
    const std::optional<std::vector<std::string>>& attachmentIDs;
    bool takesReceipts = false; // whether its action books money that receipts can prove
};

/// Books the money of a section's change as an entry of the ledger.
namespace SectionBooking {

/// What is wrong with texts and receipts by themselves.
std::optional<Refusal> whyNotShaped(const SectionTexts& texts);

/// What keeps a change from being recorded on this day.
std::optional<Refusal> whyNotOn(std::string_view day, const SectionRows& rows);

/// The entry with the balances that it leaves, or the first thing that is wrong with its receipts or balances.
std::expected<EntryChange, Refusal> book(LedgerTransaction entry, const SectionRows& rows);

/// An entry with the head of these rows and nothing else.
LedgerTransaction begin(std::string_view kind, std::string_view day, std::string_view note, const SectionRows& rows);

/// The entry that undoes `rows.original`.
LedgerTransaction opposite(std::string_view day, std::string_view note, const SectionRows& rows);

}

}
