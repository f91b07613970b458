#include "LedgerService/Http/Reply.h"

namespace LedgerService {

Reply okReply()
{
    return {.body = R"({"ok":true})"};
}

Reply replyOf(const Refusal& refusal)
{
    Reply reply{.status = refusal.status, .body = errorBody(refusal)};
    if (refusal.retryAfter.count() > 0)
        reply.headers.emplace_back("Retry-After", std::to_string(refusal.retryAfter.count()));
    return reply;
}

}
