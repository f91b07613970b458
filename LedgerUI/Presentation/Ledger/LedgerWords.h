#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Text/WordTable.h"

/// The texts of the ledger page.
namespace LedgerWords {

const WordTable& table();

QString text(std::string_view key, std::string_view locale);
QString filled(std::string_view key, std::string_view locale, std::initializer_list<std::string_view> arguments);

/// The text of `key`.one for a count of 1, else of `key`.many: "1 entry", "2,132 entries".
QString counted(std::string_view key, std::size_t count, std::string_view locale);

}
