#pragma once

#include <string_view>

#include <QString>

class WordTable;

/// What the screens say about receipts, beside the wording that they share with the entry form.
const WordTable& receiptWords();
