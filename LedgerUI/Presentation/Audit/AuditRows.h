#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/AuditTrailPage.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

/// The company's audit trail as tables show it.
namespace AuditRows {

std::vector<PlainColumn> columns(std::string_view locale);
/// Each by its number in the trail, in the order given.
std::vector<PlainRow> rows(const std::vector<AuditTrailRecord>& records, const LedgerSnapshot& snapshot,
                           std::string_view locale);

std::vector<PlainColumn> changeColumns(std::string_view locale);
/// What was changed by it, or what was said with it where nothing stood before.
std::vector<PlainRow> changes(const AuditTrailRecord& record, const LedgerSnapshot& snapshot, std::string_view locale);

/// One line about the record: what was done, to what, by whom and when.
QString headline(const AuditTrailRecord& record, const LedgerSnapshot& snapshot, std::string_view locale);

/// Every kind that a trail can hold.
std::span<const std::string_view> kinds();
/// The kind as it stands where it has no words.
QString kindText(std::string_view kind, std::string_view locale);

}
