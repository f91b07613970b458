#pragma once

class WordTable;

/// The texts of the ledger page.
const WordTable& ledgerWords();
