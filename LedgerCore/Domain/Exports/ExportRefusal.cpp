#include "LedgerCore/Domain/Exports/ExportRefusal.h"

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"

std::string_view code(ExportRefusal refusal)
{
    switch (refusal) {
    case ExportRefusal::forbidden:
        return ServiceCode::forbidden;
    case ExportRefusal::ledgerScopeChanged:
        return "LEDGER_EXPORT_SCOPE_CHANGED";
    case ExportRefusal::ledgerChanged:
        return "LEDGER_EXPORT_CHANGED";
    case ExportRefusal::reportScopeChanged:
        return "REPORT_EXPORT_SCOPE_CHANGED";
    case ExportRefusal::reportChanged:
        return "REPORT_EXPORT_CHANGED";
    }
    return {};
}

int status(ExportRefusal refusal)
{
    return refusal == ExportRefusal::forbidden ? 403 : 0;
}
