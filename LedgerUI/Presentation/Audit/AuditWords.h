#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// Texts of the company's audit trail. Kinds stand as "kind." with the command or event, the values of records as
/// "field." with their name on the wire.
const WordTable& auditWords();
