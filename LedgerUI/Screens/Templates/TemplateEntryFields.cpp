#include "LedgerUI/Screens/Templates/TemplateEntryFields.h"

#include <QComboBox>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Fields/AccountPicker.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Entry/EntryLabels.h"
#include "LedgerUI/Presentation/Templates/TemplateChoices.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

TemplateEntryFields::TemplateEntryFields(QWidget* parent) : QWidget{parent}
{
    m_kind = new TextLabel(TypeStep::body, Token::text2, this);
    m_kind->setObjectName(QStringLiteral("templateKind"));
    m_account = new AccountPicker;
    m_account->setObjectName(QStringLiteral("templateAccount"));
    m_accountField = new FormField(m_account, this);
    m_target = new AccountPicker;
    m_target->setObjectName(QStringLiteral("templateTarget"));
    m_targetField = new FormField(m_target, this);
    m_category = new QComboBox;
    m_category->setObjectName(QStringLiteral("templateCategory"));
    dressComboBox(*m_category);
    m_categoryField = new FormField(m_category, this);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::fieldToField);
    for (auto* each : {static_cast<QWidget*>(m_kind), static_cast<QWidget*>(m_accountField),
                       static_cast<QWidget*>(m_targetField), static_cast<QWidget*>(m_categoryField)})
        rows->addWidget(each);
    connect(m_account, &AccountPicker::accountChosen, this, &TemplateEntryFields::accountChosen);
    connect(m_target, &AccountPicker::accountChosen, this, &TemplateEntryFields::targetChosen);
    connect(m_category, &QComboBox::activated, this,
            [this](int at) { Q_EMIT categoryChosen(m_category->itemData(at).toString().toStdString()); });
}

void TemplateEntryFields::present(const TemplateEntry& entry, const LedgerSnapshot& snapshot, const std::string& locale)
{
    const auto prompt = wordIn(locale, EntryWords::words(), "selectAccount");
    const auto name = [](FormField& field, QComboBox& box, const QString& label) {
        field.setLabel(label);
        nameComboBox(box, label);
    };
    m_kind->setText(wordIn(locale, ledgerWords(), "kind." + entry.kind));
    name(*m_accountField, *m_account, EntryLabels::account(entry.kind, locale));
    m_account->present(TemplateChoices::accounts(entry, snapshot, locale),
                       TemplateForm::primaryAccount(entry).value_or(std::string{}), prompt);
    const bool hasDestination = TemplateForm::hasDestination(entry);
    m_targetField->setVisible(hasDestination);
    if (hasDestination) {
        name(*m_targetField, *m_target,
             wordIn(locale, entryFormWords(), entry.targetCurrency ? "receivedIn" : "toAccount"));
        m_target->present(TemplateChoices::destinations(entry, snapshot, locale),
                          entry.targetAccountID.value_or(std::string{}), prompt);
    }
    const bool hasCategory = TemplateForm::hasCategory(entry);
    m_categoryField->setVisible(hasCategory);
    if (!hasCategory)
        return;
    name(*m_categoryField, *m_category, wordIn(locale, entryFormWords(), "category"));
    presentCategories(entry, snapshot, locale);
}

void TemplateEntryFields::presentCategories(const TemplateEntry& entry, const LedgerSnapshot& snapshot,
                                            const std::string& locale)
{
    m_category->clear();
    for (const auto& each : TemplateChoices::categories(entry, snapshot, locale))
        m_category->addItem(each.name, qString(each.id));
    m_category->setCurrentIndex(m_category->findData(qString(entry.categoryID.value_or(std::string{}))));
}
