#pragma once

#include <optional>
#include <string_view>

#include <QString>

/// What a person should know before the program ends.
struct QuitWarning {
    QString title;
    QString text;
};

/// What would go with the program; nothing when it may end at once.
struct QuitLosses {
    bool awaitsChange = false;      // a command was sent and is not answered
    bool hasUnconfirmed = false;    // something may have been recorded without a confirmation
    bool hasUnsavedChanges = false; // a person changed something on a page and did not save it
};

std::optional<QuitWarning> quitWarning(const QuitLosses& losses, std::string_view locale);
