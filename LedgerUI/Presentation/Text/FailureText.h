#pragma once

#include <optional>
#include <string_view>

#include <QString>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Client/Files/FileSaving.h"

class LedgerStore;
class WordTable;

const WordTable& failureWords();

/// What a person reads of a failure.
namespace FailureText {

/// What can be done about it, where the message of all failures of its kind does not tell; empty for most.
QString advice(const Failure& failure, std::string_view locale);

/// That nobody knows what became of a command, in the words of its form, with the advice where there is some.
QString unconfirmed(const QString& words, const std::optional<Failure>& failure, std::string_view locale);

/// The advice where there is some, else the message of all failures of its kind.
QString of(const LedgerStore& store, const Failure& failure, std::string_view locale);

/// `sentence`, that something was not saved, with the reason in a line of its own where it is known.
QString ofSaving(std::string_view locale, const QString& sentence, SavingProblem problem);

}
