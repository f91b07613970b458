#pragma once

#include <string>

/// Whether the side bar lists the screen of a section.
struct SidebarVisibility {
    bool shown = true;

    bool operator==(const SidebarVisibility&) const = default;
};

/// Who changes a section of the books, and the identifiers of what comes to stand there.
struct SectionStamp {
    std::string recordID; // of what is added; further ones are numbered after it
    std::string entryID;  // of the entry that books the money
    std::string memberID;
    std::string createdAt;
};
