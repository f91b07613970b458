#include "Tallyfold/TallyfoldApp.h"

#include "LedgerCore/Client/Http/ServiceAddress.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/IdentifierSource.h"
#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Root/RootView.h"
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
    pages.add<LedgerView>(WorkspacePage::ledger);
    return pages;
}

}

struct TallyfoldApp::Parts {
    explicit Parts(std::optional<std::string> language)
        : defaults{defaultsFor(std::move(language))},
          store{
              ServiceAddress::atStart(),
              {.credentials = credentials, .languageDefaults = *defaults, .clock = clock, .identifiers = identifiers}},
          pages{builtPages()}, window{store, new RootView(store, pages)}
    {
    }

    SessionMemory credentials;
    std::unique_ptr<LanguageDefaults> defaults;
    SystemClock clock;
    RandomIdentifiers identifiers;
    LedgerStore store;
    PageRegistry pages;
    MainWindow window;
};

TallyfoldApp::TallyfoldApp(std::optional<std::string> language) : m_parts{std::make_unique<Parts>(std::move(language))}
{
}

TallyfoldApp::~TallyfoldApp() = default;

void TallyfoldApp::start()
{
    m_parts->window.show();
}

MainWindow& TallyfoldApp::window()
{
    return m_parts->window;
}
