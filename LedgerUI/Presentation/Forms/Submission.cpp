#include "LedgerUI/Presentation/Forms/Submission.h"

bool leavesUncertain(const Failure& failure, SubmissionAttempt attempt)
{
    const auto fate = fateOf(failure);
    return fate == CommandFate::unknown || (attempt == SubmissionAttempt::retry && fate != CommandFate::refused);
}
