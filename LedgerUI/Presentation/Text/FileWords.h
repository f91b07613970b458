#pragma once

class WordTable;

/// What is said where a person chooses a file or saves one.
const WordTable& fileWords();
