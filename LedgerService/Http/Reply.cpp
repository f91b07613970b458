#include "LedgerService/Http/Reply.h"

Reply replyOf(const Refusal& refusal)
{
    return {.status = refusal.status, .body = errorBody(refusal), .allow = {}};
}
