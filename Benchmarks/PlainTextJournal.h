#pragma once

#include <string>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The same books as a journal of the plain-text accounting tools: assets by account, the other side by kind and
/// category, so that the tools' balances and reports are those of Tallyfold's.
namespace PlainTextJournal {

std::string render(const LedgerSnapshot& books);

}
