#include "LedgerUI/Screens/Accounts/AccountDialogs.h"

#include <utility>

#include <QWidget>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Screens/Accounts/AccountFormDialog.h"
#include "LedgerUI/Screens/Accounts/AccountStateDialog.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"

AccountDialogs::AccountDialogs(LedgerStore& store, QWidget* page) : QObject{page}, m_store{store}, m_page{page} {}

void AccountDialogs::create()
{
    if (const auto snapshot = m_store.snapshot())
        open(new AccountFormDialog(m_store, AccountDrafts::fresh(*snapshot), m_page->window()));
}

void AccountDialogs::edit(const std::string& accountID, AccountField first)
{
    const auto snapshot = m_store.snapshot();
    const auto* account = snapshot ? snapshot->account(accountID) : nullptr;
    if (!account)
        return;
    auto* form = new AccountFormDialog(m_store, AccountDrafts::of(*account, *snapshot), m_page->window());
    form->beginWith(first);
    open(form);
}

void AccountDialogs::changeState(const std::string& accountID)
{
    const auto snapshot = m_store.snapshot();
    const auto* account = snapshot ? snapshot->account(accountID) : nullptr;
    if (!account)
        return;
    auto* dialog = new AccountStateDialog(m_store, AccountStates::of(*account), m_page->window());
    connect(dialog, &AccountStateDialog::changed, this,
            [this](const QString& sentence) { Q_EMIT changed({}, sentence); });
    dialog->open();
}

void AccountDialogs::recordOpening(const std::string& accountID, const std::string& currency)
{
    TransactionDraft draft;
    draft.kind = EntryKind::opening;
    draft.target = accountID;
    draft.currency = currency;
    auto* form = new TransactionForm(m_store, {.kind = draft.kind, .accountID = {}, .prefilled = std::move(draft)},
                                     m_page->window());
    connect(form, &TransactionForm::recorded, this, &AccountDialogs::openingRecorded);
    form->open();
}

void AccountDialogs::open(AccountFormDialog* form)
{
    connect(form, &AccountFormDialog::saved, this, &AccountDialogs::changed);
    form->open();
}
