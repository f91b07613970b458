#pragma once

class WordTable;

/// What is said on printed pages, and where they are previewed.
const WordTable& printWords();
