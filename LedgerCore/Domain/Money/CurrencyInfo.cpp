#include "LedgerCore/Domain/Money/CurrencyInfo.h"

#include <algorithm>
#include <array>

namespace {

const CurrencyInfo* find(std::string_view code)
{
    const auto all = CurrencyInfo::supported();
    const auto found = std::ranges::find(all, code, &CurrencyInfo::code);
    return found == all.end() ? nullptr : &*found;
}

}

std::span<const CurrencyInfo> CurrencyInfo::supported()
{
    static const std::array<CurrencyInfo, 18> table{{
        {"IDR", 2, "Indonesian rupiah", "Rp"},
        {"VND", 0, "Vietnamese đồng", "₫"},
        {"CNY", 2, "Chinese yuan", "¥"},
        {"USD", 2, "US dollar", "$"},
        {"EUR", 2, "Euro", "€"},
        {"SGD", 2, "Singapore dollar", "S$"},
        {"JPY", 0, "Japanese yen", "¥"},
        {"THB", 2, "Thai baht", "฿"},
        {"MYR", 2, "Malaysian ringgit", "RM"},
        {"PHP", 2, "Philippine peso", "₱"},
        {"TWD", 2, "New Taiwan dollar", "NT$"},
        {"GBP", 2, "Pound sterling", "£"},
        {"PLN", 2, "Polish zloty", "zł"},
        {"CZK", 2, "Czech koruna", "Kč"},
        {"HUF", 2, "Hungarian forint", "Ft"},
        {"MXN", 2, "Mexican peso", "MX$"},
        {"BRL", 2, "Brazilian real", "R$"},
        {"RUB", 2, "Russian ruble", "₽"},
    }};
    return table;
}

CurrencyInfo CurrencyInfo::forCode(std::string_view code)
{
    if (const auto* known = find(code))
        return *known;
    return {std::string(code), 2, std::string(code), std::string(code)};
}

bool CurrencyInfo::isSupported(std::string_view code)
{
    return find(code) != nullptr;
}

int CurrencyInfo::scaleOf(std::string_view code)
{
    const auto* known = find(code);
    return known ? known->scale : 2;
}
