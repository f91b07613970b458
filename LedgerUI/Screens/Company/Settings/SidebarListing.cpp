#include "LedgerUI/Screens/Company/Settings/SidebarListing.h"

#include <QCoro/QCoroTask>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Dividends/DividendCommands.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Components/Buttons/ToggleSwitch.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Company/Settings/SettingRow.h"

SidebarListing::SidebarListing(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store}
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    m_contributions = addRow("listContributions");
    m_dividends = addRow("listDividends");
    connect(m_contributions.toggle, &QAbstractButton::clicked, this, [this](bool isOn) { list(true, isOn); });
    connect(m_dividends.toggle, &QAbstractButton::clicked, this, [this](bool isOn) { list(false, isOn); });
}

SidebarListing::Row SidebarListing::addRow(const char* name)
{
    Row made{.row = new SettingRow(this), .toggle = new ToggleSwitch};
    made.toggle->setObjectName(QString::fromLatin1(name));
    made.row->addControl(made.toggle);
    layout()->addWidget(made.row);
    return made;
}

void SidebarListing::present()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    const auto& member = snapshot->currentMember;
    presentRow(m_contributions, "listing.contributions", FinancialFeaturePolicy::isSectionListed(snapshot->capital),
               CapitalRules::mayUse(CapitalAction::setVisibility, member));
    presentRow(m_dividends, "listing.dividends", FinancialFeaturePolicy::isSectionListed(snapshot->dividends),
               DividendRules::mayUse(DividendAction::setVisibility, member));
}

void SidebarListing::presentRow(const Row& row, const char* title, bool isOn, bool mayUse)
{
    const auto& words = bookkeepingWords();
    row.row->setVisible(mayUse);
    row.row->present(word(words, title), word(words, "listingText"));
    row.toggle->setChecked(isOn);
    row.toggle->setWords(word(words, "on"), word(words, "off"));
    row.toggle->setAccessibleName(word(words, title));
    row.toggle->setEnabled(!m_store.isBusy());
}

/// Whatever becomes of the command, the switch then stands as the books say; setting it once more does no harm.
void SidebarListing::list(bool isContributions, bool isOn)
{
    const auto& books = *m_store.snapshot();
    CommandIssue issue{m_store.today(), m_store.newIdentifier()};
    const auto answer = [this](const Result<void>& reply) { finish(reply); };
    if (isContributions) {
        const auto entry = isOn ? CapitalCommands::SidebarEntry::shown : CapitalCommands::SidebarEntry::hidden;
        auto command = CapitalCommands::setVisibility(CapitalContext::of(books), std::move(issue), entry);
        if (command)
            QCoro::connect(m_store.submitCapital(*std::move(command), true), this, answer);
    } else {
        const auto entry = isOn ? DividendCommands::SidebarEntry::shown : DividendCommands::SidebarEntry::hidden;
        auto command = DividendCommands::setVisibility(DividendContext::of(books), std::move(issue), entry);
        if (command)
            QCoro::connect(m_store.submitDividend(*std::move(command), true), this, answer);
    }
    present();
}

void SidebarListing::finish(const Result<void>& reply)
{
    present();
    if (reply)
        Q_EMIT done(word(bookkeepingWords(), "listingDone"));
}
