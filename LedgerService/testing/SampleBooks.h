#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LedgerService/Books/Books.h"

namespace LedgerService {

/// A small company for tests of the books, opened on 2026-01-01 and acted on from 2026-03-10.
///
/// Members: "mira" keeps the company accounts and the refund account, "rudi" operates the float, "guest" sees the whole
/// company and does nothing, "gone" is deactivated with every grant.
/// Accounts: "bank" (IDR 1,000,000 and USD 500 minor units), "branch" (IDR), "float" (rudi's, returns to "vault"),
/// "refunds" (mira's, IDR 50,000), "vault" (IDR, seen by mira only), "closed" (archived), "hidden" (seen by guest
/// only). Recorded: the income "sale" of IDR 80,000 on "bank", its receipt "linked", and the openings of "bank" and
/// "refunds".
namespace SampleBooks {

Books books();

BookAct actBy(std::string memberID, std::string entryID = "new");

TransactionInput income(std::int64_t amountMinor = 10'000);
TransactionInput expense(std::int64_t amountMinor = 10'000);
/// From "bank" to "branch".
TransactionInput transfer(std::int64_t amountMinor = 10'000);
/// From "bank" to rudi's float.
TransactionInput funding(std::int64_t amountMinor = 10'000);
/// From rudi's float to "vault".
TransactionInput returning(std::int64_t amountMinor = 10'000);
/// IDR for USD, both on "bank".
TransactionInput exchange(std::int64_t amountMinor = 150'000, std::int64_t targetAmountMinor = 1'000);
/// Of "sale", from "refunds".
TransactionInput refund(std::int64_t amountMinor = 10'000);
/// Of "branch".
TransactionInput opening(std::int64_t amountMinor = 10'000);

Reversal reversal();

}

}
