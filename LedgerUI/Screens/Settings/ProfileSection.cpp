#include "LedgerUI/Screens/Settings/ProfileSection.h"

#include <utility>

#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/PasswordField.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

ProfileSection::ProfileSection(LedgerStore& store, QWidget* parent) : SettingsSection{store, parent}
{
    buildLayout();
    bind();
    m_fields.add(PasswordDraft::Field::current, m_currentField->error());
    m_fields.add(PasswordDraft::Field::chosen, m_chosenField->error());
    present();
}

void ProfileSection::present()
{
    const auto& words = settingsWords();
    m_nameField->setLabel(word(words, "name"));
    m_nameHint->setText(word(words, "nameHint"));
    m_saveName->setText(word(words, "saveName"));
    m_title->setText(word(words, "password"));
    m_currentField->setLabel(word(words, "currentPassword"));
    m_chosenField->setLabel(word(words, "newPassword"));
    m_passwordHint->setText(word(words, "passwordHint"));
    m_savePassword->setText(word(words, "savePassword"));
    m_current->setEyeNames(word(words, "showCurrent"), word(words, "hideCurrent"));
    m_chosen->setEyeNames(word(words, "showNew"), word(words, "hideNew"));
    const auto snapshot = store().snapshot();
    const auto saved = snapshot && !isRenamed() ? qString(snapshot->currentMember.name) : m_savedName;
    if (std::exchange(m_savedName, saved) != saved)
        m_name->setText(saved);
    for (auto* button : {m_saveName, m_savePassword})
        button->setEnabled(!store().isBusy());
    if (isVisible() && std::exchange(m_hasDropped, false))
        askForPasswordsAgain();
}

void ProfileSection::askForPasswordsAgain()
{
    const bool isOpen = std::exchange(m_mayBeChanged, false); // the sign-in has shown which one holds
    Q_EMIT said(Banner::Kind::warn, isOpen ? QString{} : word(settingsWords(), "passwordNotChanged"));
    m_current->setFocus();
}

void ProfileSection::buildLayout()
{
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("ownName"));
    m_nameField = new FormField(m_name, this);
    const auto hint = [this] {
        auto* label = new TextLabel(TypeStep::small, Token::text2, this);
        label->setWordWrap(true);
        return label;
    };
    const auto button = [this](const char* name) {
        auto* made = new QPushButton(this);
        made->setObjectName(QString::fromLatin1(name));
        made->setAutoDefault(false);
        return made;
    };
    m_nameHint = hint();
    m_saveName = button("saveName");
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_current = new PasswordField(this);
    m_current->setObjectName(QStringLiteral("currentPassword"));
    m_currentField = new FormField(m_current, this);
    m_chosen = new PasswordField(this);
    m_chosen->setObjectName(QStringLiteral("newPassword"));
    m_chosenField = new FormField(m_chosen, this);
    m_passwordHint = hint();
    m_savePassword = button("savePassword");

    auto* nameRow = new QHBoxLayout;
    nameRow->setSpacing(Space::step3);
    nameRow->addWidget(m_nameHint, 1);
    nameRow->addWidget(m_saveName);
    auto* passwords = new QHBoxLayout;
    passwords->setSpacing(Space::step3);
    passwords->addWidget(m_currentField, 1, Qt::AlignTop);
    passwords->addWidget(m_chosenField, 1, Qt::AlignTop);
    auto* passwordRow = new QHBoxLayout;
    passwordRow->setSpacing(Space::step3);
    passwordRow->addWidget(m_passwordHint, 1);
    passwordRow->addWidget(m_savePassword);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step3);
    rows->addWidget(m_nameField);
    rows->addLayout(nameRow);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(m_title);
    rows->addLayout(passwords);
    rows->addLayout(passwordRow);
    rows->addStretch(1);
}

void ProfileSection::bind()
{
    connect(m_saveName, &QPushButton::clicked, this, &ProfileSection::saveName);
    connect(m_name, &QLineEdit::returnPressed, this, &ProfileSection::saveName);
    connect(m_name, &QLineEdit::textEdited, this, [this] { m_nameField->error().present({}); });
    connect(m_savePassword, &QPushButton::clicked, this, &ProfileSection::savePassword);
    for (auto* field : {m_current, m_chosen}) {
        connect(field, &QLineEdit::returnPressed, this, &ProfileSection::savePassword);
        connect(field, &QLineEdit::textEdited, this, [this] { m_fields.present({}); });
    }
    connect(&store(), &LedgerStore::isBusyChanged, this, &ProfileSection::present);
}

bool ProfileSection::isRenamed() const
{
    return m_name->text().trimmed() != m_savedName.trimmed();
}

bool ProfileSection::hasPasswords() const
{
    return !m_current->text().isEmpty() || !m_chosen->text().isEmpty();
}

bool ProfileSection::hasChanges() const
{
    return isRenamed() || hasPasswords();
}

/// A field that is cleared would give its text back to Ctrl+Z.
void ProfileSection::emptyPasswords()
{
    for (auto* field : {m_current, m_chosen})
        field->setText({});
}

void ProfileSection::dropPasswords()
{
    m_hasDropped = m_hasDropped || hasPasswords();
    emptyPasswords();
    m_fields.present({});
}

void ProfileSection::saveName()
{
    if (store().isBusy())
        return;
    const auto name = m_name->text().trimmed().toStdString();
    const bool isName = Naming::isName(name);
    m_nameField->error().present(isName ? QString{} : word(settingsWords(), "nameMisfit"));
    if (!isName) {
        m_name->setFocus();
        return;
    }
    Q_EMIT said(Banner::Kind::info, {});
    QCoro::connect(store().updateProfile(name, false), this, [this, name](const Result<void>& saved) {
        if (saved)
            m_savedName = qString(name);
        if (!store().snapshot())
            return;
        if (saved)
            Q_EMIT said(Banner::Kind::success, word(settingsWords(), "nameSaved"));
        else
            Q_EMIT said(Banner::Kind::error, qString(store().friendly(saved.error())));
    });
}

void ProfileSection::savePassword()
{
    if (store().isBusy())
        return;
    const auto filled = draft();
    const auto problems = filled.problems(InterfaceLanguage::tag());
    complain(problems);
    if (!problems.empty())
        return;
    Q_EMIT said(Banner::Kind::info, {});
    QCoro::connect(store().changePassword(filled.current, filled.chosen), this,
                   [this](const Result<void>& saved) { finishPassword(saved); });
}

void ProfileSection::finishPassword(const Result<void>& saved)
{
    if (saved || fateOf(saved.error()) != CommandFate::undecided)
        m_mayBeChanged = !saved && isOutcomeUnknown(saved.error());
    if (saved) {
        m_hasDropped = false;
        emptyPasswords();
        Q_EMIT said(Banner::Kind::success, word(settingsWords(), "passwordSaved"));
        return;
    }
    if (!store().snapshot()) {
        // Whoever signs in again has to know which password holds.
        if (endsSession(saved.error()) && !m_mayBeChanged)
            store().publish(saved.error(), word(settingsWords(), "passwordNotChanged").toStdString());
        return;
    }
    store().dismissMessages(); // said here
    const auto messages = PasswordDraft::refusal(saved.error(), InterfaceLanguage::tag());
    complain(messages);
    if (messages.empty())
        Q_EMIT said(Banner::Kind::error, qString(store().friendly(saved.error())));
}

void ProfileSection::complain(const PasswordDraft::Messages& messages)
{
    m_fields.present(messages);
    if (auto* first = m_fields.firstOf(messages))
        first->setFocus();
}

PasswordDraft ProfileSection::draft() const
{
    return {.current = m_current->text().toStdString(), .chosen = m_chosen->text().toStdString()};
}
