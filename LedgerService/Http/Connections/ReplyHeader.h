#pragma once

#include <string>

#include "LedgerService/Http/Reply.h"

namespace LedgerService {

namespace ReplyHeader {

/// How the client finds the end of the body, and whether the connection goes on afterwards.
struct Framing {
    bool chunked = false; // else the length is said, or the end of the connection is the end of the body
    bool keepAlive = true;
    bool version10 = false; // the client speaks HTTP/1.0
};

/// The status line and the fields, with the empty line at their end.
std::string text(const Reply& reply, Framing framing);

}

}
