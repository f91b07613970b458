#include "LedgerUI/Screens/Settings/LanguageSection.h"

#include <algorithm>

#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int systemPlace = static_cast<int>(AppLanguage::supportedLocales.size());

}

LanguageSection::LanguageSection(LedgerStore& store, QWidget* parent) : SettingsSection{store, parent}
{
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_choices = new QButtonGroup(this);
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(Space::step2);
    int place = 0;
    for (const auto tag : AppLanguage::supportedLocales) {
        auto* choice = new QRadioButton(InterfaceLanguage::nativeName(tag), this);
        choice->setObjectName(QStringLiteral("interfaceLanguage-") + qString(tag));
        m_choices->addButton(choice, place);
        grid->addWidget(choice, place / 2, place % 2);
        ++place;
    }
    m_system = new QRadioButton(this);
    m_system->setObjectName(QStringLiteral("interfaceLanguage-system"));
    m_choices->addButton(m_system, systemPlace);
    grid->addWidget(m_system, 2, 0);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step3);
    rows->addWidget(m_title);
    rows->addLayout(grid);
    rows->addWidget(m_hint);
    rows->addStretch(1);
    connect(m_choices, &QButtonGroup::idClicked, this, [this](int chosen) {
        if (chosen == systemPlace)
            this->store().setAppLanguage(std::nullopt);
        else
            this->store().setAppLanguage(std::string{AppLanguage::supportedLocales[static_cast<std::size_t>(chosen)]});
    });
    present();
}

void LanguageSection::present()
{
    m_title->setText(word(settingsWords(), "interfaceLanguage"));
    m_system->setText(word(settingsWords(), "system"));
    m_hint->setText(word(settingsWords(), "languageHint"));
    const auto& chosen = store().preferredAppLocale();
    const auto& all = AppLanguage::supportedLocales;
    const auto place = chosen ? std::ranges::find(all, *chosen) - all.begin() : systemPlace;
    m_choices->button(static_cast<int>(place))->setChecked(true);
}
