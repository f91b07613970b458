#pragma once

#include <cstddef>

#include "LedgerUI/Presentation/Records/RecordRow.h"
#include "LedgerUI/Theme/ThemeColor.h"

struct LedgerSnapshot;

/// The colours of records in these books: those of the kinds of entries are a choice of the member or the company.
struct RecordInks {
    explicit RecordInks(const LedgerSnapshot& snapshot);

    [[nodiscard]] ThemeColor of(RecordTone tone) const;
    /// The colour of the person in this place among all.
    static ThemeColor ofPerson(std::size_t place);

    ThemeColor capital;
    ThemeColor dividend;
    ThemeColor due;
};
