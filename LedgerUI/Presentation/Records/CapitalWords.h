#pragma once

class WordTable;

/// The texts of the page of capital and dividends.
const WordTable& capitalWords();
