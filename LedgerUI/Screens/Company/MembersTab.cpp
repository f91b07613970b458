#include "LedgerUI/Screens/Company/MembersTab.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QComboBox>
#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Company/MemberRows.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"
#include "LedgerUI/Screens/Company/Access/AccessEditor.h"
#include "LedgerUI/Screens/Company/Access/GrantMatrixView.h"
#include "LedgerUI/Screens/Company/Access/InviteDialog.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

constexpr int emailColumn = 1;
constexpr int roleWidth = 170;
constexpr int leastTable = 120;

}

MembersTab::MembersTab(LedgerStore& store, QWidget* parent) : CompanyTab{store, parent}
{
    buildLayout();
    bind();
    present();
}

void MembersTab::buildLayout()
{
    m_table = new PlainTable(emailColumn, this);
    m_table->setObjectName(QStringLiteral("memberTable"));
    m_table->setMinimumHeight(leastTable);
    m_editor = new QWidget(this);
    m_refusal = new Banner(Banner::Kind::error, m_editor);
    m_refusal->present(Banner::Kind::error, {});
    m_access = new AccessEditor(Space::pageMargin, m_editor);
    auto* rows = new QVBoxLayout(m_editor);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(buildHead(m_editor));
    rows->addWidget(m_refusal);
    rows->addWidget(m_access, 1);
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    m_splitter->addWidget(m_table);
    m_splitter->addWidget(m_editor);
    m_splitter->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter);
}

QWidget* MembersTab::buildHead(QWidget* parent)
{
    auto* head = new QWidget(parent);
    m_name = new ElidedLabel(TypeStep::section, Token::text, Qt::ElideRight, head);
    m_name->setObjectName(QStringLiteral("memberName"));
    m_role = new QComboBox(head);
    m_role->setObjectName(QStringLiteral("memberRole"));
    m_role->setMinimumWidth(roleWidth);
    dressComboBox(*m_role);
    m_active = new QPushButton(head);
    m_active->setObjectName(QStringLiteral("memberActive"));
    m_more = new IconButton(QStringLiteral("three-dots"), IconButton::Frame::outlined, head);
    m_more->setObjectName(QStringLiteral("memberMore"));
    m_more->setPopupMode(QToolButton::InstantPopup);
    m_menu = new QMenu(m_more);
    m_activeAction = m_menu->addAction(QString{});
    m_activeAction->setObjectName(QStringLiteral("memberActiveAction"));
    m_more->setMenu(m_menu);
    m_revert = new QPushButton(head);
    m_revert->setObjectName(QStringLiteral("memberRevert"));
    m_save = new PrimaryButton(head);
    m_save->setObjectName(QStringLiteral("memberSave"));
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    row->setSpacing(Space::step2);
    row->addWidget(m_name);
    row->addSpacing(Space::step4);
    row->addWidget(m_role);
    row->addStretch(1);
    for (auto* button : std::initializer_list<QWidget*>{m_active, m_more, m_revert, m_save})
        row->addWidget(button);
    return head;
}

void MembersTab::bind()
{
    connect(m_table, &PlainTable::chosen, this, [this](const QString& id) { askThenChoose(id.toStdString()); });
    const auto editRights = [this] { m_access->matrix().setFocus(Qt::OtherFocusReason); };
    connect(m_table, &RowTable::opened, this, editRights);
    (new ActionSet(this))->present({keyedAction("editMember", Command::editRecord, editRights)});
    connect(m_role, &QComboBox::activated, this, [this](int at) {
        auto draft = m_draft;
        draft.role = m_role->itemData(at).toString().toStdString();
        edit(std::move(draft));
    });
    connect(m_access, &AccessEditor::changed, this, &MembersTab::edit);
    connect(m_revert, &QPushButton::clicked, this, &MembersTab::revert);
    connect(m_save, &QPushButton::clicked, this, &MembersTab::save);
    connect(m_active, &QPushButton::clicked, this, &MembersTab::toggleActive);
    connect(m_activeAction, &QAction::triggered, this, &MembersTab::toggleActive);
}

std::vector<Action> MembersTab::actions()
{
    return {{.id = QStringLiteral("memberInLedger"),
             .text = word(companyWords(), "inLedger"),
             .glyph = QStringLiteral("journal-text"),
             .run =
                 [this] {
                     Q_EMIT linkPressed({.page = WorkspacePage::ledger,
                                         .action = PageAction::showEntries,
                                         .entries = LedgerFilter{.memberIDs = {m_saved.id}}});
                 }},
            {.id = QStringLiteral("invite"),
             .text = word(companyWords(), "invite"),
             .glyph = QStringLiteral("envelope-plus"),
             .ink = Token::onAccent,
             .run = [this] { (new InviteDialog(store(), this))->open(); }}};
}

PageView::StatusContext MembersTab::statusContext() const
{
    const auto count = unsavedChanges();
    return {.text = count == 0 ? QString{} : countedIn(InterfaceLanguage::tag(), companyWords(), "changes", count),
            .figure = {}};
}

QList<QWidget*> MembersTab::panes() const
{
    return {m_table, m_editor};
}

std::size_t MembersTab::unsavedChanges() const
{
    return m_saved.id.empty() ? 0 : MemberAccess::changes(m_saved, m_draft);
}

void MembersTab::present()
{
    const auto& locale = InterfaceLanguage::tag();
    adopt();
    m_table->setAccessibleName(word(companyWords(), "memberList"));
    m_table->present(MemberRows::memberColumns(locale), MemberRows::members(*store().snapshot(), locale));
    m_table->choose(m_saved.id);
    presentMember();
}

/// The member as the new snapshot has it, with what is being changed kept. A member who is gone gives way to the first.
void MembersTab::adopt()
{
    const auto snapshot = store().snapshot();
    const auto found = std::ranges::find(snapshot->members, m_saved.id, &Member::id);
    if (found != snapshot->members.end()) {
        m_draft = MemberAccess::rebased(m_draft, m_saved, *found);
        m_saved = *found;
    } else if (!snapshot->members.empty()) {
        m_saved = snapshot->members.front();
        m_draft = MemberAccess::draftOf(m_saved);
    }
}

void MembersTab::presentMember()
{
    m_name->setText(qString(m_saved.name));
    presentRoles();
    m_access->present(m_saved, m_draft, *store().snapshot());
    presentButtons();
}

void MembersTab::presentRoles()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto snapshot = store().snapshot();
    std::vector<std::string> roles{MembershipRules::roles.begin(), MembershipRules::roles.end()};
    for (const auto& role : {m_saved.role, m_draft.role}) {
        if (std::ranges::find(roles, role) == roles.end())
            roles.push_back(role);
    }
    m_role->clear();
    nameComboBox(*m_role, word(companyWords(), "role"));
    auto* model = qobject_cast<QStandardItemModel*>(m_role->model());
    for (const auto& role : roles) {
        m_role->addItem(roleText(role, locale), qString(role));
        const bool isOwn = role == m_saved.role;
        const auto refusal = isOwn ? std::nullopt : MemberAccess::whyNotRole(m_saved, role, *snapshot);
        auto* item = model->item(m_role->count() - 1);
        item->setEnabled(!refusal);
        item->setToolTip(refusal ? MemberAccess::refusalText(*refusal, locale) : QString{});
        if (role == m_draft.role)
            m_role->setCurrentIndex(m_role->count() - 1);
    }
}

void MembersTab::presentButtons()
{
    const auto& words = companyWords();
    const auto refusal = MemberAccess::whyNotActive(m_saved, !m_saved.active, *store().snapshot());
    const auto reason = refusal ? MemberAccess::refusalText(*refusal, InterfaceLanguage::tag()) : QString{};
    const auto text = word(words, m_saved.active ? "deactivate" : "reactivate");
    const bool isIdle = !store().isBusy();
    m_active->setText(text);
    setStyleProperty(m_active, "kind", m_saved.active ? QStringLiteral("danger") : QString{});
    m_active->setEnabled(isIdle && !refusal);
    m_active->setToolTip(reason);
    m_activeAction->setText(text);
    m_activeAction->setEnabled(m_active->isEnabled());
    m_activeAction->setToolTip(reason);
    m_more->setName(word(words, "more"));
    m_revert->setText(word(words, "revert"));
    m_save->setText(word(words, "saveAccess"));
    const bool hasChanges = unsavedChanges() > 0;
    m_revert->setEnabled(hasChanges);
    m_save->setEnabled(hasChanges && isIdle);
    m_role->setEnabled(isIdle);
    const bool isNarrow = window()->width() < Space::foldBelow;
    m_active->setVisible(!isNarrow);
    m_more->setVisible(isNarrow);
}

/// At first the table is as high as its members need, as far as the rights keep enough room.
void MembersTab::showEvent(QShowEvent* event)
{
    CompanyTab::showEvent(event);
    if (std::exchange(m_wasShown, true))
        return;
    const int table = std::min(m_table->wholeHeight(), height() * 2 / 5);
    m_splitter->setSizes({table, height() - table});
}

void MembersTab::resizeEvent(QResizeEvent* event)
{
    CompanyTab::resizeEvent(event);
    if (store().snapshot())
        presentButtons();
}

void MembersTab::edit(AccessDraft draft)
{
    m_draft = std::move(draft);
    m_refusal->present(Banner::Kind::error, {});
    presentMember();
    Q_EMIT standingChanged();
}

void MembersTab::askThenChoose(const std::string& memberID)
{
    if (memberID.empty() || memberID == m_saved.id)
        return;
    if (unsavedChanges() == 0) {
        take(memberID);
        return;
    }
    // The table is still busy with choosing: it goes back once it is done.
    QMetaObject::invokeMethod(
        this,
        [this, memberID] {
            m_table->choose(m_saved.id);
            MessageDialog::ask({.title = word(companyWords(), "leaveTitle", {m_saved.name}),
                                .text = word(dialogWords(), "discardBody"),
                                .confirm = word(dialogWords(), "discard"),
                                .cancel = word(dialogWords(), "keepEditing")},
                               this, [this, memberID] {
                                   revert();
                                   m_table->choose(memberID);
                               });
        },
        Qt::QueuedConnection);
}

void MembersTab::take(const std::string& memberID)
{
    const auto snapshot = store().snapshot();
    const auto found = std::ranges::find(snapshot->members, memberID, &Member::id);
    if (found == snapshot->members.end())
        return;
    m_saved = *found;
    revert();
}

void MembersTab::revert()
{
    edit(MemberAccess::draftOf(m_saved));
}

/// On the newest state of the company, so that nothing is undone that somebody else has changed meanwhile.
void MembersTab::save()
{
    QCoro::connect(store().refresh(true), this, [this](const Result<void>& refreshed) {
        if (refreshed && store().snapshot())
            sendAccess();
    });
}

void MembersTab::sendAccess()
{
    const auto snapshot = store().snapshot();
    if (const auto refusal = MemberAccess::whyNotSave(m_saved, m_draft, *snapshot)) {
        m_refusal->present(Banner::Kind::error, MemberAccess::refusalText(*refusal, InterfaceLanguage::tag()));
        return;
    }
    const auto name = m_saved.name;
    auto update = MemberAccess::update(m_saved, m_draft, *snapshot);
    QCoro::connect(store().updateMember(m_saved.id, std::move(update), true), this,
                   [this, name](const Result<void>& sent) {
                       if (sent)
                           Q_EMIT done(word(companyWords(), "accessSaved", {name}));
                   });
}

void MembersTab::toggleActive()
{
    if (!m_saved.active) {
        sendActive(true);
        return;
    }
    MessageDialog::ask({.title = word(companyWords(), "deactivateTitle", {m_saved.name}),
                        .text = word(companyWords(), "deactivateText"),
                        .confirm = word(companyWords(), "confirmDeactivate"),
                        .cancel = word(dialogWords(), "cancel")},
                       this, [this] { sendActive(false); });
}

void MembersTab::sendActive(bool isActive)
{
    MemberUpdate update;
    update.active = isActive;
    const auto name = m_saved.name;
    QCoro::connect(store().updateMember(m_saved.id, std::move(update), true), this,
                   [this, name, isActive](const Result<void>& sent) {
                       if (sent)
                           Q_EMIT done(word(companyWords(), isActive ? "reactivated" : "deactivated", {name}));
                   });
}
