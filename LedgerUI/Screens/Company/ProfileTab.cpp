#include "LedgerUI/Screens/Company/ProfileTab.h"

#include <utility>

#include <QComboBox>
#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/Country.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Fields/RemovableChips.h"
#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int formWidth = 560;

}

ProfileTab::ProfileTab(LedgerStore& store, QWidget* parent) : CompanyTab{store, parent}
{
    buildLayout();
    bind();
    m_saved = m_draft = CompanyProfile::of(*store.snapshot());
    present();
}

void ProfileTab::buildLayout()
{
    m_form = buildFields();
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* column = new QWidget;
    auto* row = new QHBoxLayout(column);
    row->setContentsMargins(Space::step6, Space::step4, Space::step6, Space::step4);
    row->addWidget(m_form, 0, Qt::AlignTop);
    row->addStretch(1);
    scroll->setWidget(column);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}

QWidget* ProfileTab::buildFields()
{
    auto* form = new QWidget;
    form->setFixedWidth(formWidth);
    m_name = new LimitedEdit(Naming::maximumName);
    m_name->setObjectName(QStringLiteral("companyName"));
    m_nameField = new FormField(m_name, form);
    m_countries = new ChoiceField;
    m_countries->setObjectName(QStringLiteral("companyCountries"));
    m_chosenCountries = new RemovableChips(QStringLiteral("country-"), form);
    m_countriesField = new FormField(m_countries, form);
    m_countriesHint = new TextLabel(TypeStep::small, Token::text2, form);
    m_countriesHint->setObjectName(QStringLiteral("companyCountryNames"));
    m_countriesHint->setWordWrap(true);
    m_languagesHead = new TextLabel(TypeStep::small, Token::text2, form);
    m_languages = new TextLabel(TypeStep::body, Token::text, form);
    m_languages->setWordWrap(true);
    m_mail = new QComboBox;
    m_mail->setObjectName(QStringLiteral("mailLanguage"));
    dressComboBox(*m_mail);
    for (const auto tag : AppLanguage::supportedLocales)
        m_mail->addItem(InterfaceLanguage::nativeName(tag), qString(tag));
    m_mailField = new FormField(m_mail, form);
    m_readOnly = new TextLabel(TypeStep::small, Token::text2, form);
    m_readOnly->setWordWrap(true);
    m_revert = new QPushButton(form);
    m_revert->setObjectName(QStringLiteral("profileRevert"));
    m_save = new PrimaryButton(form);
    m_save->setObjectName(QStringLiteral("profileSave"));
    m_fields.add(CompanyProfile::Field::name, m_nameField->error());

    auto* rows = new QVBoxLayout(form);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::labelToField);
    const auto add = [rows](std::initializer_list<QWidget*> parts) {
        for (auto* part : parts)
            rows->addWidget(part);
        rows->addSpacing(Space::fieldToField - Space::labelToField);
    };
    add({m_nameField});
    add({m_countriesField, m_chosenCountries, m_countriesHint});
    add({m_languagesHead, m_languages});
    add({m_mailField});
    add({m_readOnly});
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Space::step2);
    buttons->addStretch(1);
    buttons->addWidget(m_revert);
    buttons->addWidget(m_save);
    rows->addLayout(buttons);
    return form;
}

void ProfileTab::bind()
{
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& text) {
        auto draft = m_draft;
        draft.name = text.toStdString();
        edit(std::move(draft));
    });
    connect(m_countries, &ChoiceField::chosenChanged, this,
            [this] { edit(m_draft.withCountries(m_countries->chosen())); });
    connect(m_chosenCountries, &RemovableChips::removed, this, [this](const std::string& code) {
        auto left = m_draft;
        std::erase(left.countries, code);
        edit(std::move(left));
        if (m_draft.countries.empty())
            m_countries->setFocus(Qt::OtherFocusReason);
    });
    connect(m_mail, &QComboBox::activated, this, [this](int at) {
        auto draft = m_draft;
        draft.locale = m_mail->itemData(at).toString().toStdString();
        edit(std::move(draft));
    });
    connect(m_revert, &QPushButton::clicked, this, &ProfileTab::discardChanges);
    connect(m_save, &QPushButton::clicked, this, &ProfileTab::save);
}

std::size_t ProfileTab::unsavedChanges() const
{
    return (m_draft.name != m_saved.name ? 1U : 0U) + (m_draft.countries != m_saved.countries ? 1U : 0U) +
           (m_draft.locale != m_saved.locale ? 1U : 0U);
}

void ProfileTab::discardChanges()
{
    m_isChecked = false;
    edit(m_saved);
}

PageView::StatusContext ProfileTab::statusContext() const
{
    const auto count = unsavedChanges();
    return {.text = count == 0 ? QString{} : countedIn(InterfaceLanguage::tag(), companyWords(), "changes", count),
            .figure = {}};
}

void ProfileTab::present()
{
    const auto snapshot = store().snapshot();
    const auto now = CompanyProfile::of(*snapshot);
    m_draft = m_draft.rebased(m_saved, now);
    m_saved = now;
    const auto& words = companyWords();
    const auto& locale = InterfaceLanguage::tag();
    const bool manages = store().canManage();
    m_nameField->setLabel(word(words, "companyName"));
    m_languagesHead->setText(word(words, "languages"));
    m_mailField->setLabel(word(words, "mailLanguage"));
    if (m_name->text() != qString(m_draft.name))
        m_name->setText(qString(m_draft.name));
    m_name->setReadOnly(!manages);
    presentCountries();
    QStringList languages;
    for (const auto& tag : snapshot->company.enabledLocales)
        languages << InterfaceLanguage::nativeName(tag);
    m_languages->setText(listed(languages, locale));
    m_mail->setCurrentIndex(m_mail->findData(qString(m_draft.locale)));
    m_readOnly->setText(word(words, "readOnly"));
    m_readOnly->setVisible(!manages);
    m_fields.present(m_isChecked ? m_draft.messages(locale) : std::map<CompanyProfile::Field, QString>{});
    m_revert->setText(word(words, "revert"));
    m_revert->setEnabled(m_draft != m_saved);
    m_save->setText(word(words, "saveProfile"));
    m_save->setEnabled(m_draft != m_saved && !store().isBusy());
}

/// Who may not change them reads their names.
void ProfileTab::presentCountries()
{
    const auto& words = companyWords();
    const auto& locale = InterfaceLanguage::tag();
    const bool manages = store().canManage();
    std::vector<ChoiceList::Choice> choices;
    for (const auto& code : Country::all(locale))
        choices.push_back({.id = code, .text = qString(Country::name(code, locale))});
    m_countriesField->setLabel(word(words, "countries"));
    m_countries->setEnabled(manages);
    m_countries->present({.name = word(words, "countries"),
                          .all = {},
                          .search = word(words, "countriesSearch"),
                          .noMatch = word(words, "countriesNoMatch")},
                         choices, {m_draft.countries.begin(), m_draft.countries.end()}, word(words, "countriesChoose"));
    std::vector<RemovableChips::Entry> chips;
    QStringList names;
    for (const auto& code : m_draft.countries) {
        const auto name = Country::name(code, locale);
        names << qString(name);
        chips.push_back({.id = code, .text = qString(name), .removeName = word(words, "countryRemove", {name})});
    }
    m_chosenCountries->present(manages ? chips : std::vector<RemovableChips::Entry>{});
    m_chosenCountries->setVisible(manages && !chips.empty());
    m_countriesHint->setText(names.isEmpty() ? word(words, "countriesNone") : listed(names, locale));
    m_countriesHint->setVisible(!m_chosenCountries->isVisibleTo(m_form));
}

void ProfileTab::edit(CompanyProfile draft)
{
    m_draft = std::move(draft);
    present();
    Q_EMIT standingChanged();
}

void ProfileTab::save()
{
    m_isChecked = true;
    const auto messages = m_draft.messages(InterfaceLanguage::tag());
    auto update = m_draft.update(*store().snapshot());
    if (auto* wrong = m_fields.firstOf(messages)) {
        present();
        wrong->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (!update) {
        edit(m_saved); // blanks at the ends are no change
        return;
    }
    QCoro::connect(store().updateSettings(std::move(*update)), this, [this](const Result<void>& sent) {
        if (!sent || !store().snapshot())
            return;
        m_isChecked = false;
        edit(m_saved);
        Q_EMIT done(word(companyWords(), "profileSaved"));
    });
}
