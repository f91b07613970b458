#include "LedgerUI/Components/Dialogs/MessageDialog.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 460;
constexpr int glyphExtent = 24;

struct Look {
    const char* glyph;
    Token color;
};

Look lookOf(MessageDialog::Kind kind)
{
    switch (kind) {
    case MessageDialog::Kind::error:
        return {"x-octagon-fill", Token::danger};
    case MessageDialog::Kind::info:
        return {"info-circle-fill", Token::accent};
    case MessageDialog::Kind::question:
        return {"question-circle-fill", Token::warn};
    }
    return {"info-circle-fill", Token::accent};
}

}

MessageDialog::MessageDialog(Kind kind, const QString& text, QWidget* parent) : QDialog{parent}, m_kind{kind}
{
    setObjectName(QStringLiteral("messageDialog"));
    setWindowTitle(QStringLiteral("Tallyfold"));
    setWindowModality(Qt::WindowModal);
    build();
    setText(kind, text);
    retranslate();
}

MessageDialog* MessageDialog::ask(const Question& question, QWidget* parent, std::function<void()> confirmed)
{
    auto* dialog = new MessageDialog(Kind::question, question.text, parent);
    dialog->setObjectName(QStringLiteral("questionDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->m_title->setText(question.title);
    dialog->m_title->show();
    dialog->fit();
    dialog->m_close->hide();
    auto* cancel = new QPushButton(question.cancel, dialog);
    cancel->setObjectName(QStringLiteral("questionCancel"));
    auto* confirm = new PrimaryButton(dialog);
    confirm->setObjectName(QStringLiteral("questionConfirm"));
    confirm->setText(question.confirm);
    confirm->setAutoDefault(false);
    dialog->m_buttons->addWidget(cancel);
    dialog->m_buttons->addWidget(confirm);
    connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    connect(confirm, &QPushButton::clicked, dialog, &QDialog::accept);
    connect(dialog, &QDialog::accepted, parent, std::move(confirmed));
    // Return keeps what the person has.
    cancel->setDefault(true);
    cancel->setToolTip(KeyBindings::shown(Command::pressFocused));
    cancel->setFocus();
    dialog->open();
    return dialog;
}

void MessageDialog::setText(Kind kind, const QString& text)
{
    m_kind = kind;
    const auto look = lookOf(kind);
    m_glyph->setGlyph(QString::fromLatin1(look.glyph), look.color);
    m_text->setText(text);
    setAccessibleDescription(text);
    fit();
    if (!isVisible())
        return;
    QAccessibleEvent alert{this, QAccessible::Alert};
    QAccessible::updateAccessibility(&alert);
}

void MessageDialog::fit()
{
    layout()->activate();
    setFixedSize(dialogWidth, heightForWidth(dialogWidth));
}

void MessageDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}

void MessageDialog::build()
{
    m_glyph = new GlyphLabel(QStringLiteral("info-circle-fill"), Token::accent, glyphExtent, this);
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_title->setWordWrap(true);
    m_title->hide();
    m_text = new TextLabel(TypeStep::body, Token::text, this);
    m_text->setObjectName(QStringLiteral("messageText"));
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_close = new PrimaryButton(this);
    m_close->setObjectName(QStringLiteral("messageClose"));
    m_close->setDefault(true);
    m_close->setToolTip(KeyBindings::shown(Command::pressFocused));
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(Space::step1);
    texts->addWidget(m_title);
    texts->addWidget(m_text);
    auto* body = new QHBoxLayout;
    body->setContentsMargins(Space::dialogMargin, Space::dialogMargin, Space::dialogMargin, Space::dialogMargin);
    body->setSpacing(Space::step3 + 2);
    body->addWidget(m_glyph, 0, Qt::AlignTop);
    body->addLayout(texts, 1);

    auto* foot = new QFrame(this);
    foot->setObjectName(QStringLiteral("dialogFoot"));
    foot->setFixedHeight(Space::dialogFoot);
    m_buttons = new QHBoxLayout(foot);
    m_buttons->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, 0);
    m_buttons->setSpacing(Space::step2);
    m_buttons->addStretch(1);
    m_buttons->addWidget(m_close);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(body, 1);
    layout->addWidget(foot);
}

void MessageDialog::retranslate()
{
    m_close->setText(word(dialogWords(), "close"));
}
