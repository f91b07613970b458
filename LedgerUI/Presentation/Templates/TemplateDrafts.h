#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Entries/Drafts/TransactionDraft.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Between templates and the drafts of the entry form.
namespace TemplateDrafts {

/// What the form opens with. With a due day the draft stands on it and carries its key, so that the day gets one entry.
TransactionDraft draftOf(const EntryTemplate& kept, const std::optional<std::string>& dueDay, std::string_view locale);

/// Whether there are templates of this kind of entry.
bool recurs(std::string_view kind);

/// What of a draft makes a template; nothing while it names no account, or is of a kind that does not recur. An amount
/// that cannot be read is left open.
std::optional<TemplateEntry> entryOf(const TransactionDraft& draft, std::string_view locale);

/// What the template is called unless a person says otherwise: the note, else the category's name.
std::string suggestedName(const TemplateEntry& entry, const LedgerSnapshot& snapshot, std::string_view locale);

}
