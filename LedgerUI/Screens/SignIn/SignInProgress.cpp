#include "LedgerUI/Screens/SignIn/SignInProgress.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int ringRoom = 4; // between the text and the ring of the focus

}

SignInProgress::SignInProgress(QWidget* parent) : QWidget{parent}
{
    m_text = new ElidedLabel(TypeStep::small, Token::text2, Qt::ElideMiddle, this);
    m_text->setObjectName(QStringLiteral("signInProgress"));
    m_stop = new QPushButton(this);
    m_stop->setObjectName(QStringLiteral("signInStop"));
    m_stop->setProperty("kind", QStringLiteral("link"));
    m_stop->setAutoDefault(false);
    m_stop->setToolTip(KeyBindings::shown(Command::leave));
    connect(m_stop, &QPushButton::clicked, this, &SignInProgress::stopped);
    speakAsGroup(*this);
    setObjectName(QStringLiteral("signInWaiting"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(ringRoom, 0, 0, 0);
    row->setSpacing(Space::step3);
    row->addWidget(m_text);
    row->addWidget(m_stop);
    row->addStretch(1);
    setFixedHeight(Space::controlSmall);
    retranslate();
    present({});
}

void SignInProgress::present(const QString& text)
{
    const bool isNew = text != m_text->text();
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    m_stop->setVisible(!text.isEmpty());
    if (!isNew)
        return;
    setFocusPolicy(text.isEmpty() ? Qt::NoFocus : Qt::ClickFocus);
    setAccessibleName(text); // none while nothing is awaited: the last one would be found long after
    if (text.isEmpty())
        return;
    QAccessibleEvent changed{this, QAccessible::NameChanged};
    QAccessible::updateAccessibility(&changed);
}

QWidget* SignInProgress::stopButton() const
{
    return m_stop;
}

void SignInProgress::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void SignInProgress::paintEvent(QPaintEvent* /*event*/)
{
    if (!hasFocus() || m_text->text().isEmpty())
        return;
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen({Theme::current().color(Token::focus), 2.0});
    const auto around = m_text->geometry().adjusted(-ringRoom, 1, ringRoom, -1);
    painter.drawRoundedRect(QRectF{around}.adjusted(1, 1, -1, -1), Space::radiusSmall, Space::radiusSmall);
}

void SignInProgress::retranslate()
{
    m_stop->setText(word(signInWords(), "stop"));
}
