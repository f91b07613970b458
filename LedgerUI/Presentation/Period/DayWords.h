#pragma once

class WordTable;

/// The texts of a day that is typed or chosen in a calendar.
const WordTable& dayWords();
