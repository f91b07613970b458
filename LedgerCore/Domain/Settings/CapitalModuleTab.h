#pragma once

/// The tabs of the capital screen, in the order in which they stand.
enum class CapitalModuleTab { overview, contributions, dividends };
