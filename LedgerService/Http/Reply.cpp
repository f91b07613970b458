#include "LedgerService/Http/Reply.h"

namespace LedgerService {

Reply replyOf(const Refusal& refusal)
{
    return {.status = refusal.status, .body = errorBody(refusal)};
}

}
