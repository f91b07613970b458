#pragma once

class WordTable;

/// The words that every dialog and component shares: cancel, close, discard, what a glyph means.
const WordTable& dialogWords();
