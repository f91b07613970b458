#pragma once

class WordTable;

/// What is said where files are made from the books.
const WordTable& exportWords();
