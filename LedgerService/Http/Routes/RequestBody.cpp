#include "LedgerService/Http/Routes/RequestBody.h"

namespace LedgerService {

bool RequestBody::holdsZero(std::string_view body)
{
    constexpr std::string_view escape = R"(\u0000)"; // a zero byte itself is no JSON
    for (auto at = body.find(escape); at != body.npos; at = body.find(escape, at + escape.size())) {
        const auto before = body.substr(0, at).find_last_not_of('\\');
        const auto backslashes = before == body.npos ? at : at - before - 1;
        if (backslashes % 2 == 0) // else the text holds the escape's own signs
            return true;
    }
    return false;
}

}
