#include "LedgerUI/Screens/Company/AccessTab.h"

#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Company/MemberRows.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int rightsColumn = 1;

}

AccessTab::AccessTab(LedgerStore& store, QWidget* parent) : CompanyTab{store, parent}
{
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_role = new TextLabel(TypeStep::body, Token::text, this);
    m_role->setObjectName(QStringLiteral("ownRole"));
    m_permissions = new TextLabel(TypeStep::body, Token::text, this);
    m_permissions->setObjectName(QStringLiteral("ownPermissions"));
    m_permissions->setWordWrap(true);
    m_ask = new TextLabel(TypeStep::small, Token::text2, this);
    m_ask->setWordWrap(true);
    m_none = new TextLabel(TypeStep::body, Token::text2, this);
    m_none->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, 0);
    m_accounts = new PlainTable(rightsColumn, this);
    m_accounts->setObjectName(QStringLiteral("ownRights"));
    auto* words = new QVBoxLayout;
    words->setContentsMargins(Space::pageMargin, Space::step4, Space::pageMargin, Space::step3);
    words->setSpacing(Space::step1);
    for (auto* label : {m_title, m_role, m_permissions, m_ask})
        words->addWidget(label);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(words);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(m_none);
    rows->addWidget(m_accounts, 1);
    present();
}

QList<QWidget*> AccessTab::panes() const
{
    return {m_accounts};
}

void AccessTab::present()
{
    const auto& locale = InterfaceLanguage::tag();
    auto access = MemberRows::ownAccess(*store().snapshot(), locale);
    m_title->setText(word(companyWords(), "accessTitle"));
    m_role->setText(access.role);
    m_permissions->setText(access.permissions);
    m_ask->setText(access.whomToAsk);
    m_ask->setVisible(!access.whomToAsk.isEmpty());
    m_none->setText(word(companyWords(), "accessAccountNone"));
    m_none->setVisible(access.accounts.empty());
    m_accounts->setVisible(!access.accounts.empty());
    m_accounts->setAccessibleName(word(companyWords(), "rights"));
    m_accounts->present(MemberRows::ownAccessColumns(locale), std::move(access.accounts));
}
