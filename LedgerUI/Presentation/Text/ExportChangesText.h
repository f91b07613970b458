#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Exports/ExportChanges.h"

/// What has changed in the records behind an export, in one line: "2 entries added; Petty cash is now called Kas".
/// Empty when nothing of it has a name.
QString exportChangesText(const ExportChanges& changes, std::string_view locale);
