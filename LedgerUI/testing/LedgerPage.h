#pragma once

#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/testing/WindowUnderTest.h"

/// A window with the ledger alone.
inline PageRegistry ledgerPage()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    return pages;
}
