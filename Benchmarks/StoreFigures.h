#pragma once

#include <cstdint>

class LedgerStore;

/// The figures of the reports page on the books that the store shows.
void printReportPageFigures(LedgerStore& store, int repetitions);

/// The figures of paper and of exported files, of the books that the store shows.
void printExportFigures(LedgerStore& store, int repetitions);

/// An import of 10,000 rows by the window's dialog, beside the same number of entries sent by a client that does
/// nothing else to the service at this port.
void printImportFigures(LedgerStore& store, std::uint16_t port);
