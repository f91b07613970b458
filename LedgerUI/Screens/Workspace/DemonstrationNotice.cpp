#include "LedgerUI/Screens/Workspace/DemonstrationNotice.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Domain/DemoIdentity.h"
#include "LedgerUI/Components/GlyphLabel.h"
#include "LedgerUI/Components/TextLabel.h"
#include "LedgerUI/Presentation/InterfaceLanguage.h"
#include "LedgerUI/Presentation/WorkspaceWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int padding = 10;

// An e-mail breaks only where it can be read on.
QString breakable(QString email)
{
    constexpr char16_t zeroWidthSpace = 0x200b;
    return email.replace(QLatin1Char('@'), QString{QChar{zeroWidthSpace}} + QLatin1Char('@'));
}

}

DemonstrationNotice::DemonstrationNotice(LedgerStore& store, QWidget* parent) : QFrame{parent}, m_store{store}
{
    setObjectName(QStringLiteral("demonstrationNotice"));
    setProperty("banner", QStringLiteral("warn"));
    m_glyph = new GlyphLabel(QStringLiteral("easel"), Token::warn, Space::icon, this);
    m_texts = new QWidget(this);
    m_title = new TextLabel(TypeStep::small, Token::text, m_texts);
    m_title->setBold(true);
    m_text = new TextLabel(TypeStep::micro, Token::text, m_texts);
    m_again = new TextLabel(TypeStep::micro, Token::text2, m_texts);
    m_credentials = new TextLabel(TypeStep::micro, Token::text, m_texts);
    m_credentials->setObjectName(QStringLiteral("demonstrationCredentials"));
    m_credentials->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* rows = new QVBoxLayout(m_texts);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step1);
    for (auto* label : {m_title, m_text, m_again, m_credentials}) {
        label->setWordWrap(true);
        rows->addWidget(label);
    }
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(padding, Space::step2, padding, Space::step2);
    layout->setSpacing(Space::step2);
    layout->addWidget(m_glyph, 0, Qt::AlignTop | Qt::AlignHCenter);
    layout->addWidget(m_texts, 1);
    connect(&m_store, &LedgerStore::snapshotChanged, this, &DemonstrationNotice::present);
    connect(&m_store, &LedgerStore::isDemoChanged, this, &DemonstrationNotice::present);
    present();
}

void DemonstrationNotice::setFolded(bool isFolded)
{
    m_texts->setVisible(!isFolded);
}

void DemonstrationNotice::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        present();
    QFrame::changeEvent(event);
}

void DemonstrationNotice::present()
{
    const auto snapshot = m_store.snapshot();
    setVisible(m_store.isDemo() && snapshot);
    if (!snapshot)
        return;
    const auto& words = workspaceWords();
    const auto& email = snapshot->currentMember.email;
    m_title->setText(word(words, "demoTitle"));
    m_text->setText(word(words, "demoText"));
    m_again->setText(word(words, "demoAgain"));
    m_credentials->setText(breakable(qString(email)) + QLatin1Char('\n') + qString(DemoIdentity::password));
    const auto summary = word(words, "demoSummary", {email, DemoIdentity::password});
    setToolTip(summary);
    setAccessibleName(summary);
}
