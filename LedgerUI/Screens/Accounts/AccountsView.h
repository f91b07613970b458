#pragma once

#include <optional>
#include <string>
#include <vector>

#include "LedgerUI/Presentation/Accounts/AccountDetail.h"
#include "LedgerUI/Presentation/Accounts/AccountListing.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

class AccountBrowser;
class AccountDetailPane;
class AccountDialogs;
class AccountMessages;
class AccountNoticeView;
class AccountTable;
class AccountTotalsStrip;
class ActionSet;
class ListDetailPage;
class LedgerStore;
class PageHeader;
class PrimaryButton;
class QCheckBox;
class SearchField;
struct Action;

/// The page of accounts: what is where, and who answers for it.
class AccountsView final : public PageView {
    Q_OBJECT
public:
    explicit AccountsView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] StatusContext statusContext() const override;
    void follow(const PageLink& link) override;
    void followDay() override { adoptSnapshot(); }

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void buildHeader();
    void bindParts();
    void adoptSnapshot();
    void present();
    void presentSearch();
    void presentSelection();
    void presentActions();
    [[nodiscard]] std::vector<Action> pageActions();
    void openMenu(QPoint place);
    void openSortMenu(QPoint place);
    void retranslate();

    void ask(AccountQuery query);
    void showAccount(const std::string& accountID);
    void recordNextOpening();
    void press(const PageLink& link);
    void presentNewButton();
    void presentMessage();
    void showInLedger();
    void printStatement(const std::string& accountID, const Period& period);

    LedgerStore& m_store;
    AccountBrowser* m_browser = nullptr;
    AccountDialogs* m_dialogs = nullptr;
    ActionSet* m_actions = nullptr;
    PageHeader* m_header = nullptr;
    SearchField* m_search = nullptr;
    QCheckBox* m_showArchived = nullptr;
    PrimaryButton* m_new = nullptr;
    AccountMessages* m_messages = nullptr;
    ListDetailPage* m_page = nullptr;
    AccountTable* m_table = nullptr;
    AccountNoticeView* m_notice = nullptr;
    AccountTotalsStrip* m_totals = nullptr;
    AccountDetailPane* m_detail = nullptr;
    std::optional<AccountDetail> m_chosen;
    bool m_isRecordingOpenings = false; // one was just recorded; the next is offered
    std::string m_awaited;              // an account to go to once the page is ready
};
