#include "LedgerUI/Screens/Settings/SessionSection.h"

#include <QCoro/QCoroTask>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

SessionSection::SessionSection(LedgerStore& store, QWidget* parent) : SettingsSection{store, parent}
{
    const auto shown = [this](const char* name) {
        auto* line = new QLineEdit(this);
        line->setObjectName(QString::fromLatin1(name));
        line->setReadOnly(true);
        return line;
    };
    m_person = shown("signedInAs");
    m_service = shown("sessionAddress");
    m_personField = new FormField(m_person, this);
    m_serviceField = new FormField(m_service, this);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    m_signOut = new QPushButton(this);
    m_signOut->setObjectName(QStringLiteral("settingsSignOut"));
    m_signOut->setAutoDefault(false);
    m_signOut->setIcon(Icon::of(QStringLiteral("box-arrow-right"), Token::text));
    m_signOut->setIconSize({Space::iconBeforeText, Space::icon});
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::fieldToField);
    rows->addWidget(m_personField);
    rows->addWidget(m_serviceField);
    rows->addWidget(m_hint);
    rows->addWidget(m_signOut, 0, Qt::AlignLeft);
    rows->addStretch(1);
    // The settings close with the session; what was typed there waits for the same member.
    connect(m_signOut, &QPushButton::clicked, this, [this] {
        UnsavedChanges::leave(*this,
                              [this] { QCoro::connect(this->store().logout(), this, [](const Result<void>&) {}); });
    });
    connect(&this->store(), &LedgerStore::isBusyChanged, this, &SessionSection::present);
    present();
}

void SessionSection::present()
{
    m_personField->setLabel(word(settingsWords(), "signedInAs"));
    m_serviceField->setLabel(word(settingsWords(), "service"));
    m_hint->setText(word(settingsWords(), "sessionHint"));
    m_signOut->setText(word(settingsWords(), "signOut"));
    m_signOut->setEnabled(!store().isBusy());
    m_service->setText(qString(store().serverURL()));
    if (const auto snapshot = store().snapshot())
        m_person->setText(qString(snapshot->currentMember.email));
}
