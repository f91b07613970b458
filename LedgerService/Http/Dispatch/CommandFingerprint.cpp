#include "LedgerService/Http/Dispatch/CommandFingerprint.h"

#include <fmt/core.h>

#include "LedgerService/Random.h"

namespace LedgerService {

CommandFingerprint::CommandFingerprint(std::string_view name, std::string_view sorted, std::string_view declared)
    : m_text("fields:" + Random::digest(fmt::format("{}\n{}", name, sorted))),
      m_unsorted(Random::digest(fmt::format("{}\n{}", name, declared)))
{
}

std::string CommandFingerprint::enclosed(const std::map<std::string_view, std::string>& fields)
{
    std::string text = "{";
    for (const auto& [name, value] : fields)
        text.append(1, '"').append(name).append("\":").append(value).append(1, ',');
    return text + "}";
}

}
