#include "LedgerUI/Screens/SignIn/SignInAside.h"

#include <QButtonGroup>
#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/CardButton.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/MarkLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/SignIn/SignInState.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/SignIn/DemoIdentitySelection.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int asideWidth = 308;
constexpr int modeHeight = 52;
constexpr int markExtent = 36;

}

SignInAside::SignInAside(LedgerStore& store, QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("signInAside"));
    setFixedWidth(asideWidth);
    buildLayout(store);
    retranslate();
}

void SignInAside::present(const SignInState& state)
{
    m_demonstration->setEnabled(state.maySubmit);
    for (auto* mode : m_modes)
        mode->setEnabled(state.takesInput);
}

QList<QWidget*> SignInAside::modeButtons() const
{
    return {m_modes.begin(), m_modes.end()};
}

void SignInAside::choose(SignInMode mode)
{
    m_modes[static_cast<std::size_t>(mode)]->setChecked(true);
}

void SignInAside::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QFrame::changeEvent(event);
}

void SignInAside::buildLayout(LedgerStore& store)
{
    auto* name = new TextLabel(TypeStep::title, Token::text, this);
    name->setText(QStringLiteral("Tallyfold"));
    m_tagline = new TextLabel(TypeStep::small, Token::text2, this);
    m_tagline->setWordWrap(true);
    auto* brand = new QHBoxLayout;
    brand->setContentsMargins(Space::step2, 0, Space::step2, 0);
    brand->setSpacing(Space::step3);
    brand->addWidget(new MarkLabel(markExtent, this));
    brand->addWidget(name, 1);
    auto* tagline = new QHBoxLayout;
    tagline->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step4);
    tagline->addWidget(m_tagline);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Space::step4, Space::step6, Space::step4, Space::step4);
    layout->setSpacing(0);
    layout->addLayout(brand);
    layout->addLayout(tagline);
    auto* group = new QButtonGroup(this);
    for (const auto& mode : signInModes) {
        auto* row = new CardButton(CardButton::Lead::glyph, modeHeight, this);
        row->setObjectName(QStringLiteral("mode-") + qString(mode.name));
        row->setGlyph(qString(mode.glyph));
        row->setCheckable(true);
        row->setChecked(m_modes.empty());
        group->addButton(row, static_cast<int>(m_modes.size()));
        m_modes.push_back(row);
        layout->addWidget(row);
    }
    connect(group, &QButtonGroup::idClicked, this,
            [this](int at) { Q_EMIT modeChosen(signInModes[static_cast<std::size_t>(at)].mode); });

    m_demonstration = new DemoIdentitySelection(store, this);
    m_demonstrationHint = new TextLabel(TypeStep::small, Token::text2, this);
    m_demonstrationHint->setAlignment(Qt::AlignHCenter);
    m_demonstrationHint->setWordWrap(true);
    layout->addStretch(1);
    layout->addWidget(new Line(Qt::Horizontal, this));
    layout->addSpacing(Space::step3);
    layout->addWidget(m_demonstration);
    layout->addSpacing(Space::step1);
    layout->addWidget(m_demonstrationHint);
}

void SignInAside::retranslate()
{
    const auto& words = signInWords();
    m_tagline->setText(word(words, "tagline"));
    for (std::size_t index = 0; index < m_modes.size(); ++index) {
        m_modes[index]->setTitle(word(words, signInModes[index].title));
        m_modes[index]->setSubtitle(word(words, signInModes[index].hint));
        m_modes[index]->setAccessibleName(word(words, signInModes[index].title));
        m_modes[index]->setAccessibleDescription(word(words, signInModes[index].hint));
    }
    m_demonstrationHint->setText(word(words, "demoHint"));
}
