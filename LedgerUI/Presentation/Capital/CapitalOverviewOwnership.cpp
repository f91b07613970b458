#include <map>

#include <QStringList>

#include "LedgerCore/Domain/Capital/CapitalMath.h"
#include "LedgerUI/Presentation/Capital/CapitalOverview.h"
#include "LedgerUI/Presentation/Records/LatestFirst.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

QString word(std::string_view key, std::string_view locale)
{
    return wordIn(locale, capitalWords(), key);
}

}

std::vector<OwnershipBar> CapitalOverviews::ownership(const CapitalState& state, const CapitalQuestion& question,
                                                      std::string_view locale)
{
    const auto through = question.throughDay();
    const auto* inForce = CapitalMath::ownershipInForce(state, through);
    std::map<std::string_view, std::size_t> places;
    for (const auto& owner : state.participants)
        places.emplace(owner.id, places.size());

    std::vector<const CapitalOwnershipVersion*> versions;
    versions.reserve(state.ownershipVersions.size());
    for (const auto& version : state.ownershipVersions)
        versions.push_back(&version);
    sortLatestFirst(versions);
    std::vector<OwnershipBar> bars;
    for (const auto* version : versions) {
        OwnershipBar bar;
        bar.id = version->id;
        bar.day = DayText::shortDate(version->date, locale);
        bar.isInForce = version == inForce;
        if (bar.isInForce)
            bar.state = word("ownership.inForce", locale);
        else if (through && version->date > *through)
            bar.state = word("ownership.later", locale);
        QStringList shares;
        for (const auto& line : version->entries) {
            if (line.ownershipBps == 0)
                continue;
            const auto place = places.find(line.participantID);
            bar.shares.push_back({.name = qString(line.participantName),
                                  .percent = RecordText::percent(line.ownershipBps, locale),
                                  .basisPoints = line.ownershipBps,
                                  .swatch = place == places.end() ? places.size() : place->second});
            shares << bar.shares.back().name + QLatin1Char{' '} + bar.shares.back().percent;
        }
        bar.spoken =
            (QStringList{DayText::longDay(version->date, locale), bar.state} + shares).join(QStringLiteral(", "));
        bars.push_back(std::move(bar));
    }
    return bars;
}
