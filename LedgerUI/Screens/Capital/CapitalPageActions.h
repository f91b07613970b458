#pragma once

#include <functional>

#include <QObject>

#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Presentation/Dividends/DividendBoard.h"

class LedgerStore;
class SectionExport;
struct CapitalRoute;
struct DividendRoute;
struct RecordOutcome;

/// What the page looks at, and its actions are about.
struct CapitalFocus {
    CapitalModuleTab tab = CapitalModuleTab::overview;
    std::string currency = {};
    std::string contributionID = {}; // the chosen one
    DividendChoice choice = {};
    std::string movementID = {}; // the chosen one
    RecordEntry movementEntry = RecordRow{}.entry;
};

/// The actions of the page of capital and dividends: which of them are offered, what keeps them from being done, and
/// the forms that they open.
class CapitalPageActions final : public QObject {
    Q_OBJECT
public:
    CapitalPageActions(LedgerStore& store, QWidget& page);

    void present(const CapitalFocus& focus);
    /// Brings a command back whose outcome is unknown, locked, before it can be typed a second time.
    void offerUnconfirmed();
    [[nodiscard]] QAction* operator[](const char* id) const;

Q_SIGNALS:
    /// Something was recorded in this currency.
    void recordedIn(const QString& currency);
    void done(const QString& sentence);
    void entryWanted(const QString& entryID);

private:
    [[nodiscard]] std::vector<Action> capitalActions(const CapitalFocus& focus);
    [[nodiscard]] std::vector<Action> dividendActions(const CapitalFocus& focus);
    [[nodiscard]] std::vector<Action> chosenActions(const CapitalFocus& focus);
    [[nodiscard]] std::vector<Action> exportActions(const CapitalFocus& focus);
    [[nodiscard]] Action act(const char* id, const QString& whyNot, bool isOffered, std::function<void()> run) const;
    template <class Form, class... Opening>
    void open(const Opening&... opening);
    void finish(const RecordOutcome& outcome);

    LedgerStore& m_store;
    QWidget& m_page;
    ActionSet* m_actions = nullptr;
    SectionExport* m_export = nullptr;
};
