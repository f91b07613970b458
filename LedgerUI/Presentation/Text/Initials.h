#pragma once

#include <QString>

/// One or two letters that stand for a person: the first letters of the first and the last word, or the last two
/// characters of a Chinese name.
QString initialsOf(const QString& name);
