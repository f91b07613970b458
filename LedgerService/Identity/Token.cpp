#include "LedgerService/Identity/Token.h"

#include "LedgerService/Random.h"

namespace LedgerService {

namespace {

constexpr std::size_t tokenBytes = 32;

}

std::string Token::issue()
{
    return Random::text(tokenBytes);
}

std::string Token::hash(std::string_view token)
{
    return Random::digest(token);
}

}
