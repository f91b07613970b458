#pragma once

/// Why capital figures could not be computed.
enum class CapitalError {
    invalidState,  // the section breaks one of its rules
    invalidAmount, // an amount outside the allowed range
    amountOverflow // a sum exceeds the limit of amounts
};
