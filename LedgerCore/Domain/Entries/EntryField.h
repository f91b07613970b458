#pragma once

/// The part of the entry form that a message stands under, in the order of the form.
enum class EntryField {
    account,
    destination,
    amount,
    targetAmount,
    category,
    original, // of a refund: the income and the reference
    date,
    note,
    receipts
};
