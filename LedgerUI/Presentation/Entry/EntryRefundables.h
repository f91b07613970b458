#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// An income that a refund may name, as one line: day, category or note, and what it still allows.
struct EntryRefundableRow {
    std::string id;
    QString text;
    QString remaining;

    bool operator==(const EntryRefundableRow&) const = default;
};

namespace EntryForm {

/// The refundable incomes of a currency, the latest first.
std::vector<EntryRefundableRow> refundableRows(const LedgerSnapshot& snapshot, std::string_view currency,
                                               std::string_view locale);

}
