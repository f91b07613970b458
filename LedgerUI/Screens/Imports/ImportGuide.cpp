#include "LedgerUI/Screens/Imports/ImportGuide.h"

#include <array>

#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr std::array guideKeys{"guide.entry", "guide.transfer", "guide.exchange", "guide.opening", "guide.start"};

QPushButton* link(const char* name, const char* glyph, QWidget* parent)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setProperty("kind", QStringLiteral("link"));
    button->setIcon(Icon::of(QString::fromLatin1(glyph), Token::accent));
    button->setAutoDefault(false);
    return button;
}

}

ImportGuide::ImportGuide(QWidget* parent) : QWidget{parent}
{
    m_title = new TextLabel(TypeStep::body, Token::text, this);
    m_title->setBold(true);
    m_copyIssues = link("importCopyIssues", "copy", this);
    m_saveIssues = link("importSaveIssues", "download", this);
    m_template = link("importTemplate", "download", this);
    auto* head = new QHBoxLayout;
    head->setSpacing(Space::step2);
    head->addWidget(m_title);
    head->addStretch(1);
    for (auto* each : {m_copyIssues, m_saveIssues, m_template})
        head->addWidget(each);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step1);
    rows->addLayout(head);
    for (std::size_t at = 0; at < guideKeys.size(); ++at) {
        auto* line = new TextLabel(TypeStep::small, Token::text2, this);
        line->setWordWrap(true);
        m_lines.push_back(line);
        rows->addWidget(line);
    }
    connect(m_copyIssues, &QPushButton::clicked, this, &ImportGuide::copyWanted);
    connect(m_saveIssues, &QPushButton::clicked, this, &ImportGuide::issuesWanted);
    connect(m_template, &QPushButton::clicked, this, &ImportGuide::templateWanted);
}

void ImportGuide::present(const Shown& shown)
{
    const auto& words = importWords();
    m_title->setText(word(words, "guide"));
    m_title->setVisible(shown.howTo);
    for (std::size_t at = 0; at < guideKeys.size(); ++at) {
        m_lines[at]->setText(word(words, guideKeys[at]));
        m_lines[at]->setVisible(shown.howTo);
    }
    m_copyIssues->setText(word(words, "copyIssues"));
    m_copyIssues->setVisible(shown.copiesIssues);
    m_saveIssues->setText(word(words, "saveIssues"));
    m_saveIssues->setVisible(shown.savesIssues);
    m_template->setText(word(words, "template"));
}
