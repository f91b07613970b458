#pragma once

class WordTable;

/// The texts of the reports page.
const WordTable& reportWords();
