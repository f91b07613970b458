#pragma once

class WordTable;

/// The texts of the forms for capital and dividends.
const WordTable& capitalFormWords();
