#include "LedgerUI/Screens/Company/InvitationsTab.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroTask>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Company/MemberRows.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Company/Access/InviteDialog.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int emailColumn = 1;

}

InvitationsTab::InvitationsTab(LedgerStore& store, QWidget* parent) : CompanyTab{store, parent}
{
    buildLayout();
    bind();
    present();
    reload();
}

void InvitationsTab::buildLayout()
{
    m_list = new QWidget(this);
    m_table = new PlainTable(emailColumn, m_list);
    m_table->setObjectName(QStringLiteral("invitationTable"));
    m_hint = new TextLabel(TypeStep::small, Token::text2, m_list);
    m_hint->setWordWrap(true);
    auto* hint = new QVBoxLayout;
    hint->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);
    hint->addWidget(m_hint);
    auto* rows = new QVBoxLayout(m_list);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_table, 1);
    rows->addLayout(hint);
    rows->addStretch(0);
    m_none = new EmptyState(QStringLiteral("envelope"), this);
    m_again = new QPushButton(m_none);
    m_again->setObjectName(QStringLiteral("invitationsAgain"));
    m_none->addButton(m_again);
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(m_list);
    m_stack->addWidget(m_none);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_stack);
}

void InvitationsTab::bind()
{
    connect(m_table, &PlainTable::linkPressed, this, [this](const QString& id) { askToRevoke(id.toStdString()); });
    connect(m_table, &RowTable::opened, this, [this] { askToRevoke(m_table->chosenID()); });
    connect(m_again, &QPushButton::clicked, this, &InvitationsTab::reload);
    connect(&store(), &LedgerStore::lastRefreshChanged, this, [this] {
        if (isVisible())
            reload();
    });
    connect(&store(), &LedgerStore::isBusyChanged, this, [this] {
        if (m_isWanted)
            reload();
    });
}

std::vector<Action> InvitationsTab::actions()
{
    return {{.id = QStringLiteral("invite"),
             .text = word(companyWords(), "invite"),
             .glyph = QStringLiteral("envelope-plus"),
             .ink = Token::onAccent,
             .run = [this] {
                 auto* dialog = new InviteDialog(store(), this);
                 connect(dialog, &InviteDialog::invited, this, &InvitationsTab::reload);
                 dialog->open();
             }}};
}

PageView::StatusContext InvitationsTab::statusContext() const
{
    if (m_pending.empty())
        return {};
    return {.text = countedIn(InterfaceLanguage::tag(), companyWords(), "pending", m_pending.size()), .figure = {}};
}

QList<QWidget*> InvitationsTab::panes() const
{
    return {m_stack->currentWidget() == m_list ? static_cast<QWidget*>(m_table) : m_none};
}

void InvitationsTab::present()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto& words = companyWords();
    m_table->setAccessibleName(word(words, "invitationList"));
    auto columns = MemberRows::invitationColumns(locale);
    auto rows = MemberRows::invitations(m_pending, store().today(), locale);
    columns.push_back({.head = {}});
    for (auto& row : rows)
        row.cells.push_back({.text = word(words, "revoke"), .look = PlainCell::Look::link});
    m_table->present(std::move(columns), std::move(rows));
    m_table->setMaximumHeight(m_table->wholeHeight());
    m_hint->setText(word(words, "invitationHint"));
    if (m_isUnread)
        m_none->setTexts(word(words, "invitationsUnread"), {});
    else
        m_none->setTexts(word(words, "noInvitations"), word(words, "noInvitationsText"));
    m_again->setText(word(words, "loadAgain"));
    m_again->setVisible(m_isUnread);
    m_stack->setCurrentWidget(m_pending.empty() ? static_cast<QWidget*>(m_none) : m_list);
}

void InvitationsTab::showEvent(QShowEvent* event)
{
    CompanyTab::showEvent(event);
    reload();
}

void InvitationsTab::reload()
{
    m_isWanted = store().snapshot() != nullptr;
    // Whatever ends just now may begin something else: that goes first.
    QMetaObject::invokeMethod(this, &InvitationsTab::load, Qt::QueuedConnection);
}

void InvitationsTab::load()
{
    if (!m_isWanted || store().isBusy() || !store().canManage())
        return;
    m_isWanted = false;
    QCoro::connect(store().loadInvitations(false), this, [this](const Result<std::vector<PendingInvitation>>& loaded) {
        if (!store().snapshot())
            return;
        m_isUnread = !loaded;
        if (loaded)
            adopt(*loaded);
        else
            present();
    });
}

void InvitationsTab::adopt(std::vector<PendingInvitation> invitations)
{
    m_pending = std::move(invitations);
    m_isUnread = false;
    present();
    Q_EMIT standingChanged();
}

void InvitationsTab::askToRevoke(const std::string& id)
{
    const auto found = std::ranges::find(m_pending, id, &PendingInvitation::id);
    if (found == m_pending.end())
        return;
    MessageDialog::ask({.title = word(companyWords(), "revokeTitle", {found->name}),
                        .text = word(companyWords(), "revokeText"),
                        .confirm = word(companyWords(), "confirmRevoke"),
                        .cancel = word(dialogWords(), "cancel")},
                       this, [this, invitation = *found] { revoke(invitation); });
}

void InvitationsTab::revoke(const PendingInvitation& invitation)
{
    QCoro::connect(store().revokeInvitation(invitation.id, true), this,
                   [this, name = invitation.name](const Result<std::vector<PendingInvitation>>& left) {
                       if (!left) {
                           reload(); // it may have been accepted meanwhile
                           return;
                       }
                       adopt(*left);
                       Q_EMIT done(word(companyWords(), "revoked", {name}));
                   });
}
