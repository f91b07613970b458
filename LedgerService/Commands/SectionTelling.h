#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

#include "LedgerService/Commands/CommandAct.h"

namespace LedgerService {

/// What changes of capital and of dividends tell the audit trail alike.
namespace SectionTelling {

template <class Record>
const Record* find(const std::vector<Record>& records, std::string_view id)
{
    const auto found = std::ranges::find(records, id, &Record::id);
    return found == records.end() ? nullptr : &*found;
}

/// That a record was reversed by the one with this id.
template <class Record>
void reversed(const CommandAct& act, const Record& original, const std::string& reversalID)
{
    auto after = original;
    after.reversedBy = reversalID;
    act.tell(original, after);
}

/// Whether the side bar lists the section.
struct Shown {
    bool showInSidebar = false;
};
BOOST_DESCRIBE_STRUCT(Shown, (), (showInSidebar))

inline void shown(const CommandAct& act, bool before, bool after)
{
    act.tell(Shown{before}, Shown{after});
}

}

}
