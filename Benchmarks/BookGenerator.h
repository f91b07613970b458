#pragma once

#include <cstddef>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Makes large books to measure on: the same size always gives the same books, byte for byte, on every machine.
namespace BookGenerator {

/// Five years of a trading company from 2021-01-01 on: twelve accounts in five currencies, 66 categories on two
/// levels, entries of every kind in the order of days, some of them reversed or refunded, some with receipts. Balances
/// are those of the legs.
LedgerSnapshot books(std::size_t entryCount);

}
