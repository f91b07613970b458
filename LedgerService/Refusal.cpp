#include "LedgerService/Refusal.h"

#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerService {

namespace {

struct ErrorDetail {
    std::string code;
    std::string message;
};
BOOST_DESCRIBE_STRUCT(ErrorDetail, (), (code, message))

struct ErrorReply {
    ErrorDetail error;
};
BOOST_DESCRIBE_STRUCT(ErrorReply, (), (error))

}

std::string errorBody(const Refusal& refusal)
{
    return Json::encode(ErrorReply{{std::string{refusal.code}, refusal.message}});
}

}
