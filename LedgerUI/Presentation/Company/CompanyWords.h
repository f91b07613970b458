#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

/// The texts of the company page: its tabs, the members, the invitations and the profile.
const WordTable& companyWords();
