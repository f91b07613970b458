#pragma once

#include <string>
#include <vector>

#include <QObject>

class LedgerBrowser;
class LedgerMessages;
class LedgerTable;

/// Goes to entries and days of the ledger. A large ledger is made ready after its snapshot came: they are gone to as
/// soon as they are there.
class LedgerGuide final : public QObject {
    Q_OBJECT
public:
    enum class Shows { always, whereItStands }; // whether what hides an entry gives way to it

    LedgerGuide(LedgerBrowser& browser, LedgerTable& table, LedgerMessages& messages, QObject* parent);

    void goTo(std::vector<std::string> ids, Shows shows);
    /// To the entries of the day, else to the nearest before it.
    void goToDay(const std::string& day);
    /// Another listing is shown.
    void settle();

private:
    void settleEntries();
    void settleDay();

    LedgerBrowser& m_browser;
    LedgerTable& m_table;
    LedgerMessages& m_messages;
    std::vector<std::string> m_awaited;
    Shows m_shows = Shows::always;
    std::string m_awaitedDay;
};
