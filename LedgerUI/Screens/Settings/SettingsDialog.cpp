#include "LedgerUI/Screens/Settings/SettingsDialog.h"

#include <QApplication>
#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Settings/LanguageSection.h"
#include "LedgerUI/Screens/Settings/ProfileSection.h"
#include "LedgerUI/Screens/Settings/ReceiptsSection.h"
#include "LedgerUI/Screens/Settings/SessionSection.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 700;
constexpr int listWidth = 208;
constexpr int leastHeight = 310;
constexpr int rowHeight = 32;

}

SettingsDialog::SettingsDialog(LedgerStore& store, QWidget* parent) : CommandForm{store, parent}
{
    setObjectName(QStringLiteral("settingsDialog"));
    buildLayout();
    setConfirmVisible(false);
    setHasChanges([this] { return m_profile->hasChanges(); });
    connect(this, &CommandForm::wentAside, m_profile, &ProfileSection::dropPasswords);
    present();
}

void SettingsDialog::buildLayout()
{
    auto* body = new QWidget(bodyPlace());
    m_list = new QFrame(body);
    m_list->setObjectName(QStringLiteral("settingsSections"));
    m_list->setMinimumWidth(listWidth);
    auto* list = new QVBoxLayout(m_list);
    list->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
    list->setSpacing(2);
    m_stack = new QStackedWidget(body);
    m_stack->setMinimumHeight(leastHeight);
    auto* group = new QButtonGroup(this);
    m_profile = new ProfileSection(store(), m_stack);
    add("language", "translate", new LanguageSection(store(), m_stack));
    add("profile", "person", m_profile);
    add("receipts", "paperclip", new ReceiptsSection(store(), m_stack));
    add("session", "box-arrow-right", new SessionSection(store(), m_stack));
    for (int place = 0; place < static_cast<int>(m_sections.size()); ++place) {
        auto* row = m_sections[static_cast<std::size_t>(place)];
        group->addButton(row, place);
        list->addWidget(row);
    }
    list->addStretch(1);
    m_sections.front()->setChecked(true);
    connect(group, &QButtonGroup::idClicked, this, &SettingsDialog::choose);
    auto* columns = new QHBoxLayout(body);
    columns->setContentsMargins(0, 0, Space::step6, 0);
    columns->setSpacing(Space::step6);
    columns->addWidget(m_list);
    auto* sections = new QVBoxLayout;
    sections->setContentsMargins(0, Space::step4, 0, 0);
    sections->addWidget(m_stack);
    columns->addLayout(sections, 1);
    setBody(body, dialogWidth);
    setBodyFlush();
    m_version = new TextLabel(TypeStep::small, Token::text2, this);
    m_version->setText(QStringLiteral("Tallyfold ") + QApplication::applicationVersion());
    setFootPart(m_version);
}

void SettingsDialog::add(const char* name, const char* glyph, SettingsSection* section)
{
    auto* row = new QToolButton(m_list);
    row->setObjectName(QStringLiteral("settings-") + QString::fromLatin1(name));
    row->setProperty("kind", QStringLiteral("page"));
    row->setProperty("words", QStringLiteral("section.") + QString::fromLatin1(name));
    row->setCheckable(true);
    row->setFocusPolicy(Qt::StrongFocus);
    row->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    row->setIcon(Icon::of(QString::fromLatin1(glyph), Token::text2, Token::accent));
    row->setIconSize({Space::iconBeforeText + 2, Space::icon});
    row->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    row->setFixedHeight(rowHeight);
    m_sections.push_back(row);
    m_stack->addWidget(section);
    connect(section, &SettingsSection::said, this, [this](Banner::Kind kind, const QString& text) {
        banner().present(kind, text);
        fitWindow(Fit::following);
    });
}

void SettingsDialog::choose(int place)
{
    banner().present(Banner::Kind::info, {});
    m_stack->setCurrentIndex(place);
    fitWindow(Fit::following);
}

QWidget& SettingsDialog::firstField() const
{
    auto* inside = m_stack->currentWidget()->focusWidget();
    return inside ? *inside : *m_sections[static_cast<std::size_t>(m_stack->currentIndex())];
}

void SettingsDialog::present()
{
    setWindowTitle(word(settingsWords(), "title"));
    m_list->setAccessibleName(windowTitle());
    cancelButton().setText(word(dialogWords(), "close"));
    for (auto* row : m_sections) {
        const auto text = word(settingsWords(), row->property("words").toString().toStdString());
        row->setText(text);
        row->setAccessibleName(text);
    }
}
