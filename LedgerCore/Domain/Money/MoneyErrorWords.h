#pragma once

class WordTable;

/// Why an amount was not accepted, by the stable text of the error.
const WordTable& moneyErrorWords();
