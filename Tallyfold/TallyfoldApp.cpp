#include "Tallyfold/TallyfoldApp.h"

#include <chrono>
#include <utility>

#include <QCoreApplication>
#include <QThreadPool>
#include <QTimer>

#include "LedgerCore/Client/Http/ServiceAddress.h"
#include "LedgerCore/Client/Receipts/AttachmentCache.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/IdentifierSource.h"
#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Screens/Accounts/AccountsView.h"
#include "LedgerUI/Screens/Capital/CapitalView.h"
#include "LedgerUI/Screens/Company/CompanyView.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"
#include "LedgerUI/Screens/Root/RootView.h"
#include "LedgerUI/Screens/Summary/SummaryView.h"
#include "LedgerUI/Screens/Workspace/PageRegistry.h"
#include "Tallyfold/MainWindow.h"

namespace {

std::unique_ptr<LanguageDefaults> defaultsFor(std::optional<std::string> language)
{
    if (language)
        return std::make_unique<LanguageMemory>(std::move(language));
    return std::make_unique<UserDefaults>();
}

PageRegistry builtPages()
{
    PageRegistry pages;
    pages.add<SummaryView>(WorkspacePage::summary);
    pages.add<LedgerView>(WorkspacePage::ledger);
    pages.add<ReportsView>(WorkspacePage::reports);
    pages.add<CompanyView>(WorkspacePage::company);
    pages.add<AccountsView>(WorkspacePage::accounts);
    pages.add<CapitalView>(WorkspacePage::dividends);
    return pages;
}

}

struct TallyfoldApp::Parts {
    explicit Parts(Setup setup)
        : credentials{std::move(setup.credentials)}, defaults{defaultsFor(std::move(setup.language))},
          store{
              setup.service.value_or(ServiceAddress::atStart()),
              {.credentials = *credentials, .languageDefaults = *defaults, .clock = clock, .identifiers = identifiers}},
          pages{builtPages()}, window{store, new RootView(store, pages)}
    {
    }

    std::unique_ptr<SessionCredentialStore> credentials;
    std::unique_ptr<LanguageDefaults> defaults;
    SystemClock clock;
    RandomIdentifiers identifiers;
    LedgerStore store;
    PageRegistry pages;
    MainWindow window;
};

TallyfoldApp::TallyfoldApp(Setup setup) : m_parts{std::make_unique<Parts>(std::move(setup))} {}

TallyfoldApp::~TallyfoldApp() = default;

void TallyfoldApp::start()
{
    m_parts->window.show();
    QThreadPool::globalInstance()->start(&AttachmentCache::removeAbandoned);
}

void TallyfoldApp::leave(std::function<void()> left)
{
    constexpr std::chrono::seconds patience{3};
    const auto sayOnce = [waiting = std::make_shared<std::function<void()>>(std::move(left))] {
        if (const auto say = std::exchange(*waiting, {}))
            say();
    };
    QTimer::singleShot(patience, qApp, sayOnce);
    m_parts->store.leave().then(sayOnce);
}

MainWindow& TallyfoldApp::window()
{
    return m_parts->window;
}
