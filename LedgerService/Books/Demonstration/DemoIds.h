#pragma once

#include <string>
#include <string_view>

#include <fmt/core.h>

namespace LedgerService {

/// The identifiers of a demonstration company, readable and the same at every making: "demo-en-account-cash".
struct DemoIds {
    std::string prefix; // "demo-en"

    /// What stands for the company in addresses: "en".
    [[nodiscard]] std::string_view place() const
    {
        return std::string_view{prefix}.substr(std::string_view{"demo-"}.size());
    }
    [[nodiscard]] std::string user(std::string_view profile) const { return named("user", profile); }
    [[nodiscard]] std::string member(std::string_view profile) const { return named("member", profile); }
    [[nodiscard]] std::string account(std::string_view key) const { return named("account", key); }
    [[nodiscard]] std::string category(std::string_view key) const { return named("category", key); }
    [[nodiscard]] std::string record(int number) const { return fmt::format("{}-record-{:04}", prefix, number); }
    [[nodiscard]] std::string entry(int number) const { return fmt::format("{}-entry-{:04}", prefix, number); }

private:
    [[nodiscard]] std::string named(std::string_view kind, std::string_view key) const
    {
        return fmt::format("{}-{}-{}", prefix, kind, key);
    }
};

}
