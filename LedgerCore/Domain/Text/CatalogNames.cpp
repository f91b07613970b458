#include "LedgerCore/Domain/Text/CatalogNames.h"

#include "LedgerCore/Domain/Text/AppLanguage.h"

std::string_view CatalogNames::text(std::string_view locale) const
{
    const auto tag = AppLanguage::locale(locale);
    if (tag == "id-ID")
        return indonesian;
    if (tag == "vi-VN")
        return vietnamese;
    return tag == "en-US" ? english : chinese;
}

TextMap CatalogNames::byLanguage() const
{
    return {{"zh-CN", std::string{chinese}},
            {"id-ID", std::string{indonesian}},
            {"vi-VN", std::string{vietnamese}},
            {"en-US", std::string{english}}};
}
