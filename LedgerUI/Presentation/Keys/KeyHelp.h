#pragma once

#include <string_view>
#include <vector>

#include <QString>

/// A line of the list of all keys.
struct KeyLine {
    QString keys;
    QString text;
};

/// The keys that work in one place.
struct KeySection {
    QString title;
    std::vector<KeyLine> lines;
};

/// All keys of the program, from KeyBindings, in the language of `locale`.
std::vector<KeySection> keyHelp(std::string_view locale);
