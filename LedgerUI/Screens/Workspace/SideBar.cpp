#include "LedgerUI/Screens/Workspace/SideBar.h"

#include <QButtonGroup>
#include <QEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/CardButton.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Workspace/CompanyAccessView.h"
#include "LedgerUI/Screens/Workspace/CompanyApplicationForm.h"
#include "LedgerUI/Screens/Workspace/DemonstrationNotice.h"
#include "LedgerUI/Screens/Workspace/EntryCompanyDirectoryView.h"
#include "LedgerUI/Screens/Workspace/MemberButton.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int companyHeight = 48;
constexpr int pageButtonHeight = 32;
constexpr int railButtonHeight = 36;
constexpr int betweenPages = 2;

}

SideBar::SideBar(LedgerStore& store, QWidget* parent) : QFrame{parent}, m_store{store}
{
    setObjectName(QStringLiteral("sideBar"));
    m_group = new QButtonGroup(this);
    buildLayout();
    connect(m_group, &QButtonGroup::idClicked, this,
            [this](int id) { Q_EMIT pageChosen(static_cast<WorkspacePage>(id)); });
    connect(&m_store, &LedgerStore::snapshotChanged, this, &SideBar::present);
    setFolded(false);
    present();
    retranslate();
}

void SideBar::setPages(const std::vector<WorkspacePage>& pages)
{
    for (auto* button : m_buttons)
        delete button;
    m_buttons.clear();
    for (const auto page : pages) {
        auto* button = new QToolButton(this);
        button->setObjectName(QStringLiteral("page-") + qString(WorkspacePages::of(page).name));
        button->setProperty("kind", QStringLiteral("page"));
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setIcon(Icon::of(qString(WorkspacePages::of(page).glyph), Token::text2, Token::accent));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_group->addButton(button, static_cast<int>(page));
        m_pageRows->addWidget(button);
        m_buttons.push_back(button);
    }
    setFolded(m_isFolded);
    retranslate();
}

void SideBar::choose(WorkspacePage page)
{
    if (auto* button = m_group->button(static_cast<int>(page)))
        button->setChecked(true);
}

void SideBar::setFolded(bool isFolded)
{
    m_isFolded = isFolded;
    setFixedWidth(isFolded ? Space::rail : Space::sideBar);
    const auto shape = isFolded ? CardButton::Shape::folded : CardButton::Shape::full;
    m_company->setShape(shape);
    m_member->setFolded(isFolded);
    m_notice->setFolded(isFolded);
    for (auto* button : m_buttons) {
        button->setIconSize({isFolded ? Space::icon : Space::iconBeforeText + 2, Space::icon});
        button->setToolButtonStyle(isFolded ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
        button->setFixedHeight(isFolded ? railButtonHeight : pageButtonHeight);
    }
}

void SideBar::openCompanyMenu()
{
    m_companies->popup(m_company->mapToGlobal(QPoint{0, m_company->height() + 2}));
}

void SideBar::comeAfter(QWidget* stop)
{
    setTabOrder(stop, m_company);
    stop = m_company;
    for (auto* button : m_buttons) {
        setTabOrder(stop, button);
        stop = button;
    }
    setTabOrder(FocusChain::insert(stop, m_notice), m_member->tabStop());
}

QWidget* SideBar::focusTarget() const
{
    return m_group->checkedButton();
}

void SideBar::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QFrame::changeEvent(event);
}

void SideBar::buildLayout()
{
    m_company = new CardButton(CardButton::Lead::mark, companyHeight, this);
    m_company->setObjectName(QStringLiteral("companyButton"));
    m_company->setTrailing(QStringLiteral("chevron-expand"));
    m_companies = new EntryCompanyDirectoryView(m_store, this);
    m_notice = new DemonstrationNotice(m_store, this);
    m_member = new MemberButton(m_store, this);
    connect(m_company, &CardButton::clicked, this, &SideBar::openCompanyMenu);
    connect(m_companies, &EntryCompanyDirectoryView::joinWanted, this,
            [this] { (new CompanyAccessView(m_store, window()))->open(); });
    connect(m_companies, &EntryCompanyDirectoryView::applicationWanted, this, [this] {
        auto* form = new CompanyApplicationForm(m_store, window());
        connect(form, &CompanyApplicationForm::founded, this, &SideBar::done);
        form->open();
    });
    connect(m_member, &MemberButton::settingsWanted, this, &SideBar::settingsWanted);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Space::step2, Space::step2, Space::step2 + 1, Space::step2);
    layout->setSpacing(0);
    layout->addWidget(m_company);
    layout->addSpacing(Space::step3);
    m_pageRows = new QVBoxLayout;
    m_pageRows->setSpacing(betweenPages);
    layout->addLayout(m_pageRows);
    layout->addStretch(1);
    layout->addWidget(m_notice);
    layout->addSpacing(Space::step2);
    layout->addWidget(m_member);
}

void SideBar::present()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    m_company->setTitle(qString(snapshot->company.name));
    m_company->setAccessibleName(word(companyAccessWords(), "company", {snapshot->company.name}));
}

void SideBar::retranslate()
{
    setAccessibleName(word(workspaceWords(), "pages"));
    present();
    qsizetype position = 0;
    for (auto* button : m_buttons) {
        const auto page = static_cast<WorkspacePage>(m_group->id(button));
        const auto name = word(workspaceWords(), WorkspacePages::of(page).name);
        const auto keys = KeyBindings::pageKeys(position++);
        // A single one would underline what comes after it.
        button->setText(QString{name}.replace(QLatin1Char('&'), QStringLiteral("&&")));
        button->setAccessibleName(name);
        button->setToolTip(keys.isEmpty()
                               ? name
                               : QStringLiteral("%1 (%2)").arg(name, keys.first().toString(QKeySequence::NativeText)));
    }
}
