#include "LedgerUI/Screens/Ledger/NewEntryButton.h"

#include <array>
#include <optional>

#include <QAction>
#include <QMenu>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Entry/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

struct Kind {
    std::string_view kind;
    std::optional<Command> command;
};

constexpr std::array kinds{
    Kind{EntryKind::expense, std::nullopt},          Kind{EntryKind::income, Command::newIncome},
    Kind{EntryKind::transfer, Command::newTransfer}, Kind{EntryKind::exchange, Command::newExchange},
    Kind{EntryKind::refund, std::nullopt},           Kind{EntryKind::opening, std::nullopt}};

}

NewEntryButton::NewEntryButton(LedgerStore& store, QWidget* parent) : SplitButton{parent}, m_store{store}
{
    setObjectName(QStringLiteral("newEntry"));
    mainButton().setObjectName(QStringLiteral("newEntryButton"));
    menuButton().setObjectName(QStringLiteral("newEntryKinds"));
    m_main = new QAction(this);
    m_main->setShortcuts(KeyBindings::keys(Command::newEntry));
    connect(m_main, &QAction::triggered, this, [this] { want({}); });
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("newEntryMenu"));
    for (const auto& each : kinds) {
        if (!TransactionForm::supports(each.kind))
            continue;
        if (each.kind == EntryKind::refund)
            m_menu->addSeparator();
        auto* action = m_menu->addAction(QString{});
        action->setObjectName(QStringLiteral("newEntry.") + qString(each.kind));
        action->setData(qString(each.kind));
        if (each.command)
            action->setShortcuts(KeyBindings::keys(*each.command));
        connect(action, &QAction::triggered, this, [this, kind = std::string{each.kind}] { want(kind); });
        m_kinds.push_back(action);
    }
    setGlyph(QStringLiteral("plus-lg"));
    setAction(m_main);
    setMenu(m_menu);
    // Shortcuts hold wherever the page has the focus, not only in the menu.
    if (parent) {
        parent->addAction(m_main);
        for (auto* action : m_kinds)
            parent->addAction(action);
    }
}

void NewEntryButton::present()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto snapshot = m_store.snapshot();
    const bool mayRecord = snapshot && snapshot->currentMember.canRecord();
    const bool isBusy = m_store.isBusy();
    bool any = false;
    for (auto* action : m_kinds) {
        const auto kind = action->data().toString().toStdString();
        const bool isOffered = mayRecord && !LedgerEntryAccess::accounts(*snapshot, kind).empty();
        if (snapshot)
            action->setIcon(Icon::of(entryKindGlyph(kind), entryKindColor(kind, *snapshot)));
        action->setText(wordIn(locale, ledgerWords(), "kind." + kind));
        action->setEnabled(isOffered && !isBusy);
        action->setToolTip(isOffered ? action->text() : wordIn(locale, ledgerWords(), "newEntry.none"));
        any = any || isOffered;
    }
    m_main->setText(wordIn(locale, ledgerWords(), "newEntry"));
    m_main->setToolTip(isBusy ? wordIn(locale, ledgerWords(), "newEntry.busy") : m_main->text());
    m_main->setEnabled(any && !isBusy);
    setMenuName(wordIn(locale, ledgerWords(), "newEntry.kinds"));
    setVisible(any);
}

void NewEntryButton::want(const std::string& kind)
{
    if (!kind.empty()) {
        Q_EMIT kindWanted(kind);
        return;
    }
    for (const auto* action : m_kinds) {
        if (action->isEnabled()) {
            Q_EMIT kindWanted(action->data().toString().toStdString());
            return;
        }
    }
}
