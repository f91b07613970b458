#pragma once

#include "LedgerCore/Client/Errors/Failure.h"

/// Whether a command is sent for the first time, or after a sending of which nobody knows what became.
enum class SubmissionAttempt { first, retry };

/// Whether after this failure nobody knows if the command was carried out. A refused retry settles it only when the
/// refusal judges the command itself; one about the session, the rate or the way there says nothing about the first
/// sending.
bool leavesUncertain(const Failure& failure, SubmissionAttempt attempt);
