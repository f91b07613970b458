#pragma once

#include <expected>
#include <string_view>

#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerService/Commands/CommandAct.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Keeping templates of entries and saying what became of their due days. Nothing here records an entry.
namespace TemplateCommands {

/// Those that the member sees.
EntryTemplateList list(const CommandAct& act);

std::expected<void, Refusal> create(const CommandAct& act, const TemplateCreate& command);

/// What the template says already is answered as if it had been changed now.
std::expected<void, Refusal> update(const CommandAct& act, std::string_view templateID, const TemplateUpdate& command);

std::expected<void, Refusal> remove(const CommandAct& act, std::string_view templateID);

/// Skips a due day, or has it proposed again. For those who may record the entry.
std::expected<void, Refusal> setDay(const CommandAct& act, std::string_view templateID, const TemplateDay& command);

/// What is known of the due day for which an entry is to be recorded: its template, taken away or not, and what became
/// of the day. It need not be one of its days any more. What is recorded stays so for a member from whom the template
/// was taken meanwhile, too, if that member sees the entry: nobody else learns that the day was recorded.
struct DueDay {
    TemplateOccurrence occurrence;
    std::optional<SettledDay> settled;
    bool maySettle = false; // the member sees the template and may record on its account
};
std::optional<DueDay> dueDay(const CommandAct& act, std::string_view key);

/// Has the due day be recorded by the entry.
void keepRecorded(const CommandAct& act, const TemplateOccurrence& occurrence, const LedgerTransaction& entry);

}

}
