#include "LedgerUI/Screens/Company/Access/InvitationCodeDialog.h"

#include <utility>

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 520;

}

InvitationCodeDialog::InvitationCodeDialog(Invitation invitation, QWidget* parent)
    : FormDialog{parent}, m_invitation{std::move(invitation)}
{
    setObjectName(QStringLiteral("invitationCodeDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    confirmButton().setObjectName(QStringLiteral("invitationDone"));
    cancelButton().hide();
    buildBody();
    // "Done" is said by whoever has written the code down; Esc is pressed by accident.
    setHasChanges([this] { return !m_isCopied; });
    connect(this, &FormDialog::confirmed, this, &InvitationCodeDialog::leave);
    present();
}

void InvitationCodeDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_text = new TextLabel(TypeStep::body, Token::text, body);
    m_text->setWordWrap(true);
    auto* frame = new QFrame(body);
    frame->setProperty("card", true);
    m_code = new TextLabel(TypeStep::figure, Token::text, frame);
    m_code->setObjectName(QStringLiteral("invitationCode"));
    m_code->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_copy = new QPushButton(frame);
    m_copy->setObjectName(QStringLiteral("invitationCopy"));
    m_copy->setAutoDefault(false);
    m_copy->setIconSize({Space::iconBeforeText, Space::icon});
    m_hint = new TextLabel(TypeStep::small, Token::text2, body);
    m_hint->setWordWrap(true);
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(Space::step3, Space::step2, Space::step3, Space::step2);
    row->addWidget(m_code, 1);
    row->addWidget(m_copy);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::step3);
    rows->addWidget(m_text);
    rows->addWidget(frame);
    rows->addWidget(m_hint);
    setBody(body, dialogWidth);
    connect(m_copy, &QPushButton::clicked, this, &InvitationCodeDialog::copy);
}

void InvitationCodeDialog::present()
{
    const auto& words = companyWords();
    setWindowTitle(word(words, "createdTitle"));
    m_text->setText(word(words, "createdText", {m_invitation.name, m_invitation.email}));
    m_code->setText(qString(m_invitation.code));
    m_code->setAccessibleName(word(words, "code") + QStringLiteral(": ") + m_code->text());
    m_copy->setText(word(words, m_isCopied ? "codeCopied" : "copyCode"));
    m_copy->setIcon(Icon::of(m_isCopied ? QStringLiteral("check-lg") : QStringLiteral("clipboard")));
    m_hint->setText(word(words, "createdHint"));
    setConfirmText(word(words, "done"));
    setLeaveQuestion(word(words, "uncopiedTitle"), word(words, "createdHint"), word(words, "uncopiedLeave"),
                     word(words, "uncopiedStay"));
}

void InvitationCodeDialog::copy()
{
    QGuiApplication::clipboard()->setText(m_code->text());
    m_isCopied = true;
    present();
}

void InvitationCodeDialog::changeEvent(QEvent* event)
{
    FormDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        present();
}
