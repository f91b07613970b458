#pragma once

#include "LedgerCore/Domain/Entries/EntryField.h"

/// Why an entry is not recorded. The same reason can stand under several fields.
enum class PostingReason {
    inactiveMember,
    // The command by itself
    unknownKind,  // no entry of this kind can be recorded
    foreignField, // something is given that entries of this kind do not have
    missing,      // something that entries of this kind need is not given
    currencyMissing,
    invalidDay,
    invalidKey, // the idempotency key is empty or too long
    textTooLong,
    textUnsound, // broken UTF-8 or a NUL
    notPositive,
    tooLarge,     // beyond the largest amount
    sameCurrency, // an exchange needs two
    sameAccount,
    tooManyReceipts,
    sameReceipt,      // the same receipt twice
    originalRequired, // a refund names an income or a reference
    // What it names
    notFound, // not there, or not to be seen by the member
    accountArchived,
    notGranted,
    notResponsible, // a restricted account of somebody else
    kindRefused,    // the account takes no entries of this kind
    restrictedToRestricted,
    wrongPurpose, // a transfer states another purpose than that of its accounts
    currencyNotHeld,
    wrongCategoryKind,
    categoryArchived,
    receiptLinked, // to another entry already
    // Its day
    inFuture,        // after tomorrow
    beforeStart,     // of the books
    startUnreadable, // the start of the books names no day
    openingDay,      // openings are booked on the start of the books
    beforeOriginal,  // a refund before its income
    // What is recorded already
    notRefundable,       // the original is no income in this currency
    originalUnavailable, // it is reversed, or the member may not refund it
    duplicateReference,
    refundLimit,
    openingExists,
    historyIncomplete, // whether an opening exists cannot be told from what the member sees
    // Balances
    insufficientFunds, // of an employee's account
    reserveUnknown,    // what an employee's account holds could not be confirmed
    balanceLimit,
};

/// What keeps an entry from being recorded, and the field of the form that it is about.
struct PostingRefusal {
    EntryField field = EntryField::account;
    PostingReason reason = PostingReason::notFound;

    bool operator==(const PostingRefusal&) const = default;
};
