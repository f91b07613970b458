#pragma once

class WordTable;

/// The texts about templates of entries and what is due by them.
const WordTable& templateWords();
