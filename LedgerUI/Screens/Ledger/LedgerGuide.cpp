#include "LedgerUI/Screens/Ledger/LedgerGuide.h"

#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Screens/Ledger/LedgerMessages.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"

LedgerGuide::LedgerGuide(LedgerBrowser& browser, LedgerTable& table, LedgerMessages& messages, QObject* parent)
    : QObject{parent}, m_browser{browser}, m_table{table}, m_messages{messages}
{
}

void LedgerGuide::goTo(std::vector<std::string> ids, Shows shows)
{
    std::erase(ids, std::string{}); // one that could not be reloaded is not there
    m_awaited = std::move(ids);
    m_shows = shows;
    settleEntries();
}

void LedgerGuide::goToDay(const std::string& day)
{
    auto filter = m_browser.filter();
    const auto parsed = LedgerDay::parse(day);
    if (!parsed)
        return;
    if (!filter.period.contains(day))
        filter.period = Period::containing(Period::Span::month, *parsed);
    m_awaitedDay = day;
    m_browser.setFilter(std::move(filter));
    settleDay();
}

void LedgerGuide::settle()
{
    settleEntries();
    settleDay();
}

void LedgerGuide::settleEntries()
{
    if (m_awaited.empty() || m_browser.isPreparing())
        return;
    auto ids = std::exchange(m_awaited, {});
    // One is shown in its month, several in the days that they span.
    const auto reveal = [&] { return ids.size() == 1 ? m_browser.reveal(ids.front()) : m_browser.reveal(ids); };
    if (m_shows == Shows::always && reveal() && m_browser.isPreparing()) {
        m_awaited = std::move(ids);
        return;
    }
    const auto& id = ids.back();
    if (m_table.chooseAll(ids)) {
        m_table.setFocus(Qt::OtherFocusReason);
    } else if (const auto book = m_browser.book(); book && book->find(id) != LedgerBook::none) {
        m_messages.announce(m_browser, id);
        m_messages.enter();
    }
}

void LedgerGuide::settleDay()
{
    const auto& listing = m_browser.listing();
    if (m_awaitedDay.empty() || m_browser.isPreparing() || !listing)
        return;
    const auto day = LedgerDay::parse(std::exchange(m_awaitedDay, {}));
    const auto place = day ? placeOfDay(*listing, *day) : std::nullopt;
    if (place && m_table.choose(listing->book->transaction(listing->rows[*place]).id))
        m_table.setFocus(Qt::OtherFocusReason);
}
