#include "LedgerUI/Screens/Workspace/MemberButton.h"

#include <QAction>
#include <QCoro/QCoroTask>
#include <QEvent>
#include <QMenu>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/CardButton.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

constexpr int buttonHeight = 44;

}

MemberButton::MemberButton(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store}
{
    m_button = new CardButton(CardButton::Lead::initials, buttonHeight, this);
    m_button->setObjectName(QStringLiteral("memberButton"));
    m_button->setTrailing(QStringLiteral("gear"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_button);
    buildMenu();
    connect(m_button, &CardButton::clicked, this, [this] {
        const auto above = m_button->mapToGlobal(QPoint{0, -m_menu->sizeHint().height()});
        m_menu->popup(above);
    });
    connect(&m_store, &LedgerStore::snapshotChanged, this, &MemberButton::present);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &MemberButton::present);
    present();
}

void MemberButton::setFolded(bool isFolded)
{
    m_button->setShape(isFolded ? CardButton::Shape::folded : CardButton::Shape::full);
}

QWidget* MemberButton::tabStop() const
{
    return m_button;
}

void MemberButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        present();
    QWidget::changeEvent(event);
}

void MemberButton::buildMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("memberMenu"));
    m_settings = m_menu->addAction(QString{});
    m_settings->setObjectName(QStringLiteral("openSettings"));
    m_settings->setIcon(Icon::of(QStringLiteral("gear")));
    connect(m_settings, &QAction::triggered, this, &MemberButton::settingsWanted);
    m_menu->addSeparator();
    m_signOut = m_menu->addAction(QString{});
    m_signOut->setObjectName(QStringLiteral("signOut"));
    m_signOut->setIcon(Icon::of(QStringLiteral("box-arrow-right")));
    connect(m_signOut, &QAction::triggered, this, &MemberButton::signOut);
}

void MemberButton::present()
{
    const auto& words = workspaceWords();
    m_settings->setText(word(words, "settings"));
    m_signOut->setText(word(words, "signOut"));
    m_signOut->setEnabled(!m_store.isBusy());
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    const auto& member = snapshot->currentMember;
    const auto role = roleText(member.role, InterfaceLanguage::tag());
    m_button->setTitle(qString(member.name));
    m_button->setSubtitle(role);
    m_button->setAccessibleName(word(words, "member", {member.name, role.toStdString()}));
}

void MemberButton::signOut()
{
    // The root screen leaves the workspace as soon as the snapshot is gone; there is nothing left to do here.
    UnsavedChanges::leave(*this, [this] { QCoro::connect(m_store.logout(), this, [](const Result<void>&) {}); });
}
