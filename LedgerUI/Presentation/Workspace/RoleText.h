#pragma once

#include <string_view>

#include <QString>

class WordTable;

/// What a member's role is called in the language of `locale`; a role of the service's own is shown as it stands.
QString roleText(std::string_view role, std::string_view locale);

/// What the roles are called.
const WordTable& roleWords();
