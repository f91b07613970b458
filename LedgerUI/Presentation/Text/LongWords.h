#pragma once

#include <QString>

/// The text with invisible places at which a line may end inside words that are longer than any word of a language: a
/// name without spaces is then broken where room is short, instead of widening what shows it.
QString breakingLongWords(const QString& text);
