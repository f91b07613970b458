#include "LedgerUI/Screens/Workspace/DemonstrationNotice.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int padding = 10;
constexpr int copyExtent = 22;

// An e-mail that is too long for one line goes on at its "@" or a point; only the shown text holds these invisible
// places to break.
QString breakable(const QString& email)
{
    constexpr QChar zeroWidthSpace{0x200b};
    QString shown;
    for (const auto character : email) {
        if (character == QLatin1Char('@') || character == QLatin1Char('.'))
            shown += zeroWidthSpace;
        shown += character;
    }
    return shown;
}

}

DemonstrationNotice::DemonstrationNotice(LedgerStore& store, QWidget* parent) : QFrame{parent}, m_store{store}
{
    setObjectName(QStringLiteral("demonstrationNotice"));
    setProperty("banner", QStringLiteral("warn"));
    connect(&m_store, &LedgerStore::snapshotChanged, this, &DemonstrationNotice::present);
    connect(&m_store, &LedgerStore::isDemoChanged, this, &DemonstrationNotice::present);
    present();
}

/// With the first sample that is open: most people's side bars never say so.
void DemonstrationNotice::build()
{
    auto* glyph = new GlyphLabel(QStringLiteral("easel"), Token::warn, Space::icon, this);
    m_texts = new QWidget(this);
    m_title = new TextLabel(TypeStep::small, Token::text, m_texts);
    m_title->setBold(true);
    m_text = new TextLabel(TypeStep::micro, Token::text, m_texts);
    m_again = new TextLabel(TypeStep::micro, Token::text2, m_texts);
    m_credentials = new TextLabel(TypeStep::micro, Token::text, m_texts);
    m_credentials->setObjectName(QStringLiteral("demonstrationCredentials"));
    m_copy = new IconButton(QStringLiteral("clipboard"), IconButton::Frame::none, m_texts);
    m_copy->setObjectName(QStringLiteral("copyDemonstrationEmail"));
    m_copy->setFixedSize(copyExtent, copyExtent);
    connect(m_copy, &IconButton::clicked, this, [this] {
        if (const auto snapshot = m_store.snapshot())
            QGuiApplication::clipboard()->setText(qString(snapshot->currentMember.email));
    });
    auto* rows = new QVBoxLayout(m_texts);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step1);
    for (auto* label : {m_title, m_text, m_again}) {
        label->setWordWrap(true);
        rows->addWidget(label);
    }
    m_credentials->setWordWrap(true);
    auto* credentials = new QHBoxLayout;
    credentials->setSpacing(0);
    credentials->addWidget(m_credentials, 1);
    credentials->addWidget(m_copy, 0, Qt::AlignTop);
    rows->addLayout(credentials);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(padding, Space::step2, padding, Space::step2);
    layout->setSpacing(Space::step2);
    layout->addWidget(glyph, 0, Qt::AlignTop | Qt::AlignHCenter);
    layout->addWidget(m_texts, 1);
    m_texts->setVisible(!m_isFolded);
    FocusChain::settle(this);
}

void DemonstrationNotice::setFolded(bool isFolded)
{
    m_isFolded = isFolded;
    if (m_texts)
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
    // Whoever comes back with the e-mail and password has an ordinary session, but the company is still a sample.
    const bool isSample = snapshot && (m_store.isDemo() || snapshot->company.demo);
    if (isSample && !m_texts)
        build();
    setVisible(isSample);
    if (!isSample)
        return;
    const auto& words = workspaceWords();
    const auto& email = snapshot->currentMember.email;
    m_title->setText(word(words, "demoTitle"));
    m_text->setText(word(words, "demoText"));
    m_again->setText(word(words, "demoAgain"));
    m_credentials->setText(breakable(qString(email)) + QLatin1Char('\n') + qString(DemoIdentity::password));
    const auto summary = word(words, "demoSummary", {email, DemoIdentity::password});
    m_copy->setName(word(words, "demoCopy"));
    setToolTip(summary);
    setAccessibleName(summary);
}
