#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

namespace PeriodWords {

/// The texts of periods and of their navigator.
const WordTable& table();

}
