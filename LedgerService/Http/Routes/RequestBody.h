#pragma once

#include <expected>
#include <utility>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerService/Http/Request.h"
#include "LedgerService/Http/Routes/BodyLists.h"
#include "LedgerService/Refusal.h"

namespace LedgerService {

namespace RequestBody {

/// The record that the body holds, which is used up, or the refusal of a body that does not hold one.
template <class Record>
std::expected<Record, Refusal> decode(Request& request)
{
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
