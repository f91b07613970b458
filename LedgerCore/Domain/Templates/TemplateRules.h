#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Entries/Posting/PostingRules.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"

/// Who may keep which template, and what it may say. An entry is judged by the rules of recording, except for what the
/// person adds on its day: the amount and the category may be left open, and balances are asked when it is recorded.
namespace TemplateRules {

enum class Refusal {
    nameUnsound,
    kindRefused, // refunds and openings do not recur
    recurrenceUnsound,
    tooMany,
    unknown,   // or not seen
    notAuthor, // only the author and who manages the company change it
    changed,   // it is no longer what was seen
    notDue,    // the day is none of its days, or too far away
    recorded,  // an entry is recorded for the day
};

inline constexpr std::size_t mostOfMember = 200;

/// Whether entries of this kind recur.
bool takesKind(std::string_view kind);

/// What is wrong with the template itself, whoever keeps it, or nothing.
std::optional<Refusal> whyNotShaped(std::string_view name, const TemplateEntry& entry,
                                    const std::optional<Recurrence>& recurrence);

/// The entry as it would be recorded on `day`; amounts that are left open are 0. Where the accounts are not given, a
/// transfer states no purpose.
TransactionInput inputOf(const TemplateEntry& entry, std::string_view day, const Account* source = nullptr,
                         const Account* target = nullptr);

/// What keeps the member of the context from keeping a template of this entry, or nothing. The context is that of
/// `inputOf` the entry on the day of the context.
std::optional<PostingReason> whyNotKeep(const TemplateEntry& entry, const PostingContext& context);

/// What keeps the member from recording anything on the account that the entry begins from, or nothing.
bool mayRecord(const TemplateEntry& entry, const Account& account, const Member& member);

/// The account that the member needs for recording: money leaves it, or arrives there when it leaves none.
std::string_view accountID(const TemplateEntry& entry);

/// Its author sees a template as long as they see the account that it begins from, others all of its accounts.
bool maySee(const EntryTemplate& kept, const Member& member);

bool mayChange(const EntryTemplate& kept, const Member& member);

}
