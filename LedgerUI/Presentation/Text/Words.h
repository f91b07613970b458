#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include <QString>
#include <QStringList>

class WordTable;

inline QString qString(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The text of `key` in the language of `locale`; the key itself when the table does not hold it.
QString wordIn(std::string_view locale, const WordTable& table, std::string_view key);
/// The same with "%1" to "%9" filled in.
QString wordIn(std::string_view locale, const WordTable& table, std::string_view key,
               std::initializer_list<std::string_view> arguments);

/// A count with its digits grouped as the language has them.
std::string groupedNumber(std::size_t count, std::string_view locale);
/// The text of `key`.one for a count of 1, else of `key`.many: "1 entry", "2,132 entries".
QString countedIn(std::string_view locale, const WordTable& table, std::string_view key, std::size_t count);

/// The parts that are not empty, side by side as the language lists them: "Exchange, Singapore".
QString listed(QStringList parts, std::string_view locale);
