#pragma once

#include <string_view>

namespace LedgerService {

/// How the body of a reply is packed on its way.
enum class ContentCoding { identity, gzip, zstd };

namespace ContentCodings {

/// The coding that serves the client best by its "Accept-Encoding"; the first one of equals is the quicker one.
/// Identity where it names none of them: a reply without a coding is always an answer, because the work behind it is
/// done already.
ContentCoding preferred(std::string_view accepted);

/// Its name in "Content-Encoding".
std::string_view nameOf(ContentCoding coding);

}

}
