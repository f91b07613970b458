#pragma once

#include <string>

/// Whether the side bar lists the screen of a section.
struct SidebarVisibility {
    bool shown = true;

    bool operator==(const SidebarVisibility&) const = default;
};

/// What every built command on a section carries of its moment: the bookkeeping day and the key that makes a retry
/// harmless.
struct CommandIssue {
    std::string date;           // "YYYY-MM-DD"
    std::string idempotencyKey; // fresh for each command built
};

/// Who changes a section of the books, and the identifiers of what comes to stand there.
struct SectionStamp {
    std::string recordID; // of what is added; further ones are numbered after it
    std::string entryID;  // of the entry that books the money
    std::string memberID;
    std::string createdAt;
};
