#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Client/Files/FileSaving.h"

/// `sentence`, that something was not saved, with the reason in a line of its own where it is known.
QString notSavedText(std::string_view locale, const QString& sentence, SavingProblem problem);
