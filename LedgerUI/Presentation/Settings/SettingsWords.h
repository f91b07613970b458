#pragma once

class WordTable;

/// The texts of the settings.
const WordTable& settingsWords();
