#pragma once

#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerUI/Presentation/Ledger/LedgerNames.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

/// Templates as a person reads them.
namespace TemplateText {

/// "Every 2 weeks, until 31 Dec 2026", "Does not repeat".
QString recurrence(const std::optional<Recurrence>& recurrence, std::string_view locale);

/// "Expense · Operating bank · Rent", "Transfer · Operating bank → Petty cash".
QString entry(const TemplateEntry& entry, const LedgerNames& names);

/// The amount of the entry, or that it is entered each time.
QString amount(const TemplateEntry& entry, std::string_view locale);

/// "Due 30 Nov 2026 (2 times)", "31 Dec 2026", "Over".
PlainCell next(const EntryTemplate& kept, std::string_view today, std::string_view locale);

std::vector<PlainColumn> columns(std::string_view locale);
std::vector<PlainRow> rows(const std::vector<EntryTemplate>& templates, const LedgerSnapshot& snapshot,
                           std::string_view today, std::string_view locale);

}
