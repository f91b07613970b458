#include "LedgerCore/Domain/Text/Collation.h"

#include <cstdint>
#include <memory>

#include <unicode/ucol.h>
#include <unicode/uiter.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace {

struct CollatorClosing {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CollatorClosing>;

Collator opened(const char* language)
{
    UErrorCode status = U_ZERO_ERROR;
    Collator collator{ucol_open(language, &status)};
    ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
    require(U_SUCCESS(status) != 0, "the system knows the order of every interface language");
    return collator;
}

/// Each language's order is loaded once and then only read, from any thread.
const UCollator* collatorFor(std::string_view locale)
{
    const auto tag = AppLanguage::locale(locale);
    if (tag == "vi-VN") {
        static const auto vietnamese = opened("vi");
        return vietnamese.get();
    }
    if (tag == "id-ID") {
        static const auto indonesian = opened("id");
        return indonesian.get();
    }
    if (tag == "en-US") {
        static const auto english = opened("en");
        return english.get();
    }
    static const auto chinese = opened("zh");
    return chinese.get();
}

}

bool Collation::isBefore(std::string_view left, std::string_view right, std::string_view locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto order = ucol_strcollUTF8(collatorFor(locale), left.data(), static_cast<std::int32_t>(left.size()),
                                        right.data(), static_cast<std::int32_t>(right.size()), &status);
    require(U_SUCCESS(status) != 0, "any two texts can be compared");
    return order == UCOL_EQUAL ? left < right : order == UCOL_LESS;
}

std::string Collation::sortKey(std::string_view text, std::string_view locale)
{
    const auto* const collator = collatorFor(locale);
    UCharIterator letters;
    uiter_setUTF8(&letters, text.data(), static_cast<std::int32_t>(text.size()));
    std::string key;
    std::uint32_t state[2] = {0, 0};
    for (bool complete = false; !complete;) {
        std::uint8_t part[64] = {};
        UErrorCode status = U_ZERO_ERROR;
        const auto count = ucol_nextSortKeyPart(collator, &letters, state, part, sizeof part, &status);
        require(U_SUCCESS(status) != 0, "any text has a place in the order");
        key.append(part, part + count);
        complete = count < static_cast<std::int32_t>(sizeof part);
    }
    key += '\0';
    return key.append(text);
}
