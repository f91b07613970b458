#pragma once

#include <span>
#include <string>
#include <string_view>

#include <boost/describe.hpp>

/// A currency as pickers and amounts need it. `scale` is the number of minor-unit digits (0 or 2 in the table).
struct CurrencyInfo {
    std::string code; // ISO 4217, upper case
    int scale = 2;
    std::string name; // English
    std::string symbol;

    bool operator==(const CurrencyInfo&) const = default;

    /// The 18 currencies that amounts can be typed in, in the order of every picker.
    static std::span<const CurrencyInfo> supported();

    /// The supported currency of this exact code, or a stand-in of scale 2 named after the code.
    static CurrencyInfo forCode(std::string_view code);

    static bool isSupported(std::string_view code);

    /// `forCode(code).scale` without building the record.
    static int scaleOf(std::string_view code);
};
BOOST_DESCRIBE_STRUCT(CurrencyInfo, (), (code, scale, name, symbol))
