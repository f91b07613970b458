#pragma once

#include <string_view>

/// Why a file is not written, although it was asked for and previewed.
enum class ExportRefusal {
    forbidden,          // the member may not export, or not see what would be in the file
    ledgerScopeChanged, // another company or person, or a choice that no longer exists
    ledgerChanged,      // the file would differ from its preview
    reportScopeChanged,
    reportChanged
};

/// The code by which the refusal is shown, as if the service had refused.
std::string_view code(ExportRefusal refusal);

/// HTTP status that goes with the code; 0 where the client itself found out.
int status(ExportRefusal refusal);
