#include "LedgerUI/Screens/SignIn/DemoIdentitySelection.h"

#include <QActionGroup>
#include <QCoro/QCoroTask>
#include <QEvent>
#include <QMenu>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

DemoIdentitySelection::DemoIdentitySelection(LedgerStore& store, QWidget* parent) : QPushButton{parent}, m_store{store}
{
    setObjectName(QStringLiteral("demonstration"));
    setIcon(Icon::of(QStringLiteral("easel"), Token::text));
    setIconSize({Space::iconBeforeText, Space::icon});
    setAutoDefault(false);
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("demonstrationMenu"));
    m_profiles = new QActionGroup(this);
    for (const auto profile : DemoIdentity::profiles) {
        auto* action = menu->addAction(QString{});
        action->setObjectName(QStringLiteral("profile-") + qString(profile));
        action->setData(qString(profile));
        m_profiles->addAction(action);
        connect(action, &QAction::triggered, this, [this, profile] { start(std::string{profile}); });
    }
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { menu->setMinimumWidth(width()); });
    setMenu(menu);
    retranslate();
}

void DemoIdentitySelection::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QPushButton::changeEvent(event);
}

void DemoIdentitySelection::start(const std::string& profile)
{
    Q_EMIT submitting();
    QCoro::connect(m_store.startDemo(m_store.locale(), profile), this, [this](const Result<void>& done) {
        const auto* error = done ? nullptr : std::get_if<APIError>(&done.error());
        if (error && error->code == ClientCode::invalidServerURL)
            Q_EMIT addressRefused(qString(m_store.friendly(done.error())));
        else if (error)
            setFocus();
    });
}

void DemoIdentitySelection::retranslate()
{
    setText(word(signInWords(), "demo"));
    for (auto* action : m_profiles->actions())
        action->setText(roleText(action->data().toString().toStdString(), InterfaceLanguage::tag()));
}
