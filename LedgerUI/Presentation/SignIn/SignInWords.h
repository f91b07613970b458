#pragma once

class WordTable;

/// The texts of the sign-in screen.
const WordTable& signInWords();
