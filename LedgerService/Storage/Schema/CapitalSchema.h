#pragma once

#include <span>

namespace LedgerService {

/// The tables of capital and dividends. Rows are only ever added: every accepted change takes the next revision of its
/// section, and what came to stand there bears that revision.
namespace CapitalSchema {

std::span<const char* const> tables();

}

}
