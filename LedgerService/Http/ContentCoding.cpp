#include "LedgerService/Http/ContentCoding.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "LedgerService/Http/HeaderList.h"

namespace LedgerService {

namespace {

using Wishes = std::vector<HeaderList::Wish>;

/// The weight of what is named so; named twice, the smaller one.
std::optional<int> weightOf(const Wishes& wishes, std::string_view name)
{
    std::optional<int> weight;
    for (const auto& each : wishes) {
        if (HeaderList::isSame(each.name, name))
            weight = std::min(each.weight, weight.value_or(each.weight));
    }
    return weight;
}

/// "x-gzip" is what gzip was once called. Whoever takes anything is given it, because everybody knows it.
int gzipWeight(const Wishes& wishes)
{
    for (const std::string_view name : {"gzip", "x-gzip", "*"}) {
        if (const auto weight = weightOf(wishes, name))
            return *weight;
    }
    return 0;
}

}

ContentCoding ContentCodings::preferred(std::string_view accepted)
{
    const auto wishes = HeaderList::wishes(accepted);
    const int gzip = gzipWeight(wishes);
    const int zstd = weightOf(wishes, "zstd").value_or(0);
    const int packed = std::max(gzip, zstd);
    if (packed == 0 || packed < weightOf(wishes, "identity").value_or(0))
        return ContentCoding::identity;
    return zstd >= gzip ? ContentCoding::zstd : ContentCoding::gzip;
}

std::string_view ContentCodings::nameOf(ContentCoding coding)
{
    switch (coding) {
    case ContentCoding::gzip:
        return "gzip";
    case ContentCoding::zstd:
        return "zstd";
    case ContentCoding::identity:
        break;
    }
    return "identity";
}

}
