#pragma once

#include <QString>

/// One or two letters that stand for a person: the first letters of the first and the last word, or the last two
/// characters of a Chinese name.
QString initialsOf(const QString& name);

/// The text with invisible places at which a line may end inside words that are longer than any word of a language: a
/// name without spaces is then broken where room is short, instead of widening what shows it.
QString breakingLongWords(const QString& text);
