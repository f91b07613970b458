#pragma once

class LedgerStore;

/// The figures of the reports page on the books that the store shows.
void printReportPageFigures(LedgerStore& store, int repetitions);
