#pragma once

class WordTable;

/// What each key does, and the headings of the list of all keys.
const WordTable& keyWords();
