#pragma once

#include "LedgerUI/Components/Table/RowDelegate.h"

class LedgerTableModel;

/// What a cell of the ledger's table looks like. On one line the note stands beside the title and the far end of a
/// movement before it; on two lines they stand below.
Cell ledgerCell(const LedgerTableModel& model, const QModelIndex& index, RowDelegate::Density density);
