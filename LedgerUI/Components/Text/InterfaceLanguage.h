#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include <QString>

#include "LedgerUI/Presentation/Text/Words.h"

class WordTable;

/// The language that the screens write in. A change posts QEvent::LanguageChange to the application, which hands it to
/// every widget; each rebuilds its texts in changeEvent and keeps everything else.
namespace InterfaceLanguage {

/// One of AppLanguage::supportedLocales.
const std::string& tag();

/// Does nothing when `tag` is the language in force.
void change(std::string tag);

/// The language's own name, the same in every language: "Tiếng Việt".
QString nativeName(std::string_view tag);

}

/// A text of `table` in the language in force.
QString word(const WordTable& table, std::string_view key);
/// The same with "%1" to "%9" filled in.
QString word(const WordTable& table, std::string_view key, std::initializer_list<std::string_view> arguments);
