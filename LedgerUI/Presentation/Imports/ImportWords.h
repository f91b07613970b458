#pragma once

class WordTable;

/// What is said where older entries are brought in from a file.
const WordTable& importWords();
