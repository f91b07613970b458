#pragma once

#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerCore/Domain/Entries/Drafts/TransactionDraft.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// An entry that a member has begun and not recorded, as the service keeps it for that member alone. Its key is the
/// `idempotencyKey` of `entry`.
struct EntryDraft {
    TransactionDraft entry;
    std::string locale;                   // in whose separators its amounts were typed
    std::optional<TransactionInput> sent; // set: it was on its way, and nobody was told what came of it
    std::string writer;                   // the running program that has kept it last
    std::string changedAt;                // stamp

    bool operator==(const EntryDraft&) const = default;
};
BOOST_DESCRIBE_STRUCT(EntryDraft, (), (entry, locale, sent, writer, changedAt))

/// The member's drafts, the one that was changed last at the end.
struct EntryDraftList {
    std::vector<EntryDraft> drafts;

    bool operator==(const EntryDraftList&) const = default;
};
BOOST_DESCRIBE_STRUCT(EntryDraftList, (), (drafts))

/// Body of keeping a draft. What another program has kept is only overwritten, or given up, by one that names it.
struct DraftKeep {
    TransactionDraft entry;
    std::string locale;
    std::optional<TransactionInput> sent;
    std::string writer;
    std::optional<std::string> takenFrom; // the writer from whom the draft is taken over

    bool operator==(const DraftKeep&) const = default;
};
BOOST_DESCRIBE_STRUCT(DraftKeep, (), (entry, locale, sent, writer, takenFrom))

/// Who gives a draft up.
struct DraftDiscard {
    std::string writer;
    std::optional<std::string> takenFrom; // the writer whose draft was in sight

    bool operator==(const DraftDiscard&) const = default;
};

/// Reply to keeping one.
struct DraftKept {
    std::optional<std::string> recordedEntryID; // set: nothing is kept, the entry of this key stands in the books

    bool operator==(const DraftKept&) const = default;
};
BOOST_DESCRIBE_STRUCT(DraftKept, (), (recordedEntryID))
