#pragma once

#include "LedgerService/Http/ContentCoding.h"
#include "LedgerService/Http/Reply.h"

namespace LedgerService {

/// Replies that are packed before they go out.
namespace ReplyPacking {

/// Whether this reply goes out packed to a client that takes the coding. Short ones do not, nor files, which are packed
/// in their own way.
bool packs(const Reply& reply, ContentCoding coding);

/// The reply as it goes out to such a client. What is there of its body is packed here, further blocks as they are
/// made, which takes a while: not for the network thread.
Reply packed(Reply reply, ContentCoding coding);

}

}
