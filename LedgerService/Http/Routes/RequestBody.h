#pragma once

#include <expected>
#include <string_view>
#include <utility>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Http/Request.h"
#include "LedgerService/Http/Routes/BodyLists.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

namespace RequestBody {

/// Whether a text of the body, which is JSON, holds a zero byte. No text of the books does: some databases would end it
/// there.
bool holdsZero(std::string_view body);

/// The record that the body holds, which is used up, or the refusal of a body that does not hold one.
template <class Record>
std::expected<Record, Refusal> decode(Request& request)
{
    if (holdsZero(request.body))
        return std::unexpected(Refusal::of(ServiceCode::validationError, "A text of the body holds a zero byte."));
    auto record = Json::consume<Record>(std::exchange(request.body, {}));
    if (!record)
        return std::unexpected(
            Refusal::of(ServiceCode::validationError, "The body is not the record that is expected here."));
    if (!BodyLists::areShort(*record))
        return std::unexpected(
            Refusal::of(ServiceCode::validationError, "A list of the body is longer than any command needs."));
    return *std::move(record);
}

}

}
