#include "Tests/EndToEnd/Stage/CapitalCompany.h"

#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Keyboard.h"
#include "Tests/EndToEnd/Story.h"

void CapitalCompany::found(Stage& stage, Colleague& colleague) const
{
    stage.service.foundCompany(QString::fromUtf8(name), QString::fromUtf8(owner), QString::fromUtf8(password));
    auto& store = colleague.store();
    colleague.signIn(owner, password);
    const auto add = [&](std::string account, std::vector<std::string> currencies) {
        AccountCreate opening;
        opening.name = std::move(account);
        opening.currencies = std::move(currencies);
        colleague.done(store.createAccount(std::move(opening)), "an account is opened");
    };
    add("Operating bank", {"IDR", "USD"});
    add("Second bank", {"IDR"});
    const auto start = store.today().substr(0, 4) + "-01-01";
    auto books = FinancialSettingsRules::initialize(*store.snapshot(), store.today(), start,
                                                    std::string{InitializationMode::fromZero}, store.newIdentifier());
    expect(books.has_value(), QStringLiteral("the books can begin"));
    colleague.done(store.submitFinancialSettings(*std::move(books), false), "the books begin");
    auto switched = FinancialSettingsRules::configure(*store.snapshot(), {.contributions = true, .dividends = true},
                                                      store.newIdentifier());
    expect(switched.has_value(), QStringLiteral("the features can be switched on"));
    colleague.done(store.submitFinancialSettings(*std::move(switched), false), "the features are switched on");
}

void CapitalCompany::enter(Stage& stage, const QString& address) const
{
    auto& screen = stage.screen;
    stage.findTheServiceAt(address);
    screen.fill("email", owner);
    screen.fill("password", password);
    screen.keys("Return");
    screen.waitFor("page-dividends");
    Keyboard{screen}.press("page-dividends");
    screen.waitFor("ownersTable");
}
