#pragma once

#include <string_view>

#include "LedgerCore/Domain/Text/LocalizedName.h"

/// A constant display name in the four interface languages.
struct CatalogNames {
    std::string_view chinese;
    std::string_view indonesian;
    std::string_view vietnamese;
    std::string_view english;

    /// The name in the language that `locale` resolves to.
    [[nodiscard]] std::string_view text(std::string_view locale) const;

    /// By language tag, as a category record holds them.
    [[nodiscard]] TextMap byLanguage() const;
};
