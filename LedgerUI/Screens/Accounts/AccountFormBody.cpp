#include "LedgerUI/Screens/Accounts/AccountFormBody.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Components/Buttons/ChoiceTile.h"
#include "LedgerUI/Components/Fields/AccountPicker.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Accounts/AccountCurrencies.h"
#include "LedgerUI/Theme/Space.h"

namespace {

QString text(std::string_view key)
{
    return word(accountFormWords(), key);
}

std::string chosen(const std::string& id)
{
    return id == AccountForm::nobody ? std::string{} : id;
}

}

AccountFormBody::AccountFormBody(QWidget* parent) : QWidget{parent}
{
    buildName();
    buildPurposes();
    buildPeople();
    buildCurrencies();
    buildFunders();
    m_consequence = new Banner(Banner::Kind::info, this);
    m_consequence->setObjectName(QStringLiteral("accountConsequence"));
    m_history = agreement(AccountField::historyAcknowledgement, QStringLiteral("accountHistory"),
                          &AccountDraft::acknowledgesHistory);
    m_currency = agreement(AccountField::currencyAcknowledgement, QStringLiteral("accountCurrencyAccess"),
                           &AccountDraft::acknowledgesCurrencies);
    arrange();
}

void AccountFormBody::buildName()
{
    m_name = new LimitedEdit(Naming::maximumName);
    m_name->setObjectName(QStringLiteral("accountFormName"));
    m_nameField = new FormField(m_name, this);
    m_nameField->error().setObjectName(QStringLiteral("accountFormNameError"));
    m_fields.add(AccountField::name, m_nameField->error());
    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& typed) {
        Q_EMIT edited(AccountField::name, [name = typed.toStdString()](AccountDraft& draft) { draft.name = name; });
    });
}

void AccountFormBody::buildPurposes()
{
    m_purposes = new QWidget(this);
    auto* row = new QHBoxLayout(m_purposes);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step2);
    m_tileGroup = new QButtonGroup(m_purposes);
    for (const auto purpose : {AccountGroup::company, AccountGroup::employee, AccountGroup::refund}) {
        auto* tile = new ChoiceTile(m_purposes);
        tile->setObjectName(QStringLiteral("accountPurpose-") + qString(accountGroupName(purpose)));
        m_tileGroup->addButton(tile);
        m_tiles.push_back(tile);
        row->addWidget(tile, 1);
        connect(tile, &QAbstractButton::clicked, this, [this, purpose] {
            Q_EMIT edited(AccountField::purpose, [purpose](AccountDraft& draft) { draft.purpose = purpose; });
        });
    }
}

void AccountFormBody::buildPeople()
{
    m_responsible = new AccountPicker;
    m_responsible->setObjectName(QStringLiteral("accountResponsible"));
    m_responsibleField = new FormField(m_responsible, this);
    m_fields.add(AccountField::responsible, m_responsibleField->error());
    connect(m_responsible, &AccountPicker::accountChosen, this, [this](const std::string& id) {
        Q_EMIT edited(AccountField::responsible, [id](AccountDraft& draft) {
            draft.responsibleID = chosen(id);
            draft.acknowledgesHistory = false; // it was about somebody else
        });
    });
    m_return = new AccountPicker;
    m_return->setObjectName(QStringLiteral("accountReturn"));
    m_returnField = new FormField(m_return, this);
    m_fields.add(AccountField::returnAccount, m_returnField->error());
    connect(m_return, &AccountPicker::accountChosen, this, [this](const std::string& id) {
        Q_EMIT edited(AccountField::returnAccount, [id](AccountDraft& draft) { draft.returnAccountID = chosen(id); });
    });
}

void AccountFormBody::buildCurrencies()
{
    m_currencies = new AccountCurrencies;
    connect(m_currencies, &AccountCurrencies::added, this, [this](const std::string& code) {
        Q_EMIT edited(AccountField::currencies, [code](AccountDraft& draft) {
            draft.currencies.push_back(code);
            draft.acknowledgesCurrencies = false;
        });
    });
    connect(m_currencies, &AccountCurrencies::removed, this, [this](const std::string& code) {
        Q_EMIT edited(AccountField::currencies, [code](AccountDraft& draft) { std::erase(draft.currencies, code); });
    });
}

void AccountFormBody::buildFunders()
{
    m_funders = new QWidget;
    m_funders->setObjectName(QStringLiteral("accountFunders"));
    m_funderRow = new WrapLayout(m_funders, Space::step4);
    m_funderRow->setContentsMargins(0, 0, 0, 0);
}

AccountFormBody::Agreement AccountFormBody::agreement(AccountField field, const QString& name,
                                                      bool AccountDraft::* given)
{
    Agreement made{.box = new QWidget(this)};
    made.banner = new Banner(Banner::Kind::warn, made.box);
    made.check = new QCheckBox(made.box);
    made.check->setObjectName(name);
    auto* error = new FieldError(made.check, made.box);
    auto* rows = new QVBoxLayout(made.box);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step2);
    rows->addWidget(made.banner);
    rows->addWidget(made.check);
    rows->addWidget(error);
    m_fields.add(field, *error);
    connect(made.check, &QCheckBox::clicked, this, [this, field, given](bool isOn) {
        Q_EMIT edited(field, [given, isOn](AccountDraft& draft) { draft.*given = isOn; });
    });
    return made;
}

QWidget* AccountFormBody::group(TextLabel*& label, QWidget* part, AccountField field)
{
    auto* box = new QWidget(this);
    label = new TextLabel(TypeStep::small, Token::text2, box);
    part->setParent(box);
    auto* error = new FieldError(part, box);
    auto* rows = new QVBoxLayout(box);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(label);
    rows->addSpacing(Space::labelToField);
    rows->addWidget(part);
    rows->addWidget(error);
    m_fields.add(field, *error, [this, field]() -> QWidget* {
        if (field == AccountField::purpose)
            return m_tileGroup->checkedButton();
        if (field == AccountField::funders && !m_funderChecks.empty())
            return m_funderChecks.front();
        return m_currencies->firstControl();
    });
    return box;
}

void AccountFormBody::arrange()
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::fieldToField);
    auto* people = new QHBoxLayout;
    people->setSpacing(Space::step4);
    people->addWidget(m_responsibleField, 1, Qt::AlignTop);
    people->addWidget(m_returnField, 1, Qt::AlignTop);
    rows->addWidget(m_nameField);
    rows->addWidget(group(m_purposeLabel, m_purposes, AccountField::purpose));
    rows->addLayout(people);
    m_currenciesGroup = group(m_currenciesLabel, m_currencies, AccountField::currencies);
    rows->addWidget(m_currenciesGroup);
    m_fundersGroup = group(m_fundersLabel, m_funders, AccountField::funders);
    rows->addWidget(m_fundersGroup);
    rows->addWidget(m_consequence);
    rows->addWidget(m_history.box);
    rows->addWidget(m_currency.box);
    rows->addStretch(1);
}

void AccountFormBody::present(const AccountFormContent& content)
{
    m_nameField->setLabel(text("name"));
    if (m_name->text() != content.name)
        m_name->setText(content.name);
    m_purposeLabel->setText(text("purpose"));
    for (std::size_t at = 0; at < m_tiles.size(); ++at) {
        const auto& purpose = content.purposes[at];
        m_tiles[at]->present(purpose.glyph, purpose.title, purpose.sentence);
        m_tiles[at]->setChecked(purpose.isChosen);
    }
    m_responsibleField->setLabel(text("responsible"));
    m_responsible->present(content.people, content.responsibleID, content.responsiblePrompt);
    m_returnField->setVisible(content.isRestricted);
    m_returnField->setLabel(text("returnAccount"));
    m_return->present(content.returns, content.returnID, {});
    m_currenciesLabel->setText(text("currencies"));
    m_currencies->present(content);
    m_fundersGroup->setVisible(content.isRestricted);
    m_fundersLabel->setText(text("funders"));
    presentFunders(content.funders);
    m_consequence->present(Banner::Kind::info, content.consequence);
    presentAgreement(m_history, content.history);
    presentAgreement(m_currency, content.currency);
    m_fields.present(content.messages);
}

void AccountFormBody::presentFunders(const std::vector<AccountFormContent::Funder>& funders)
{
    while (m_funderChecks.size() < funders.size()) {
        auto* check = new QCheckBox(m_funders);
        m_funderRow->addWidget(check);
        m_funderChecks.push_back(check);
        connect(check, &QCheckBox::clicked, this, [this, check](bool isOn) {
            const auto id = check->property("memberID").toString().toStdString();
            Q_EMIT edited(AccountField::funders, [id, isOn](AccountDraft& draft) {
                if (isOn)
                    draft.funderIDs.insert(id);
                else
                    draft.funderIDs.erase(id);
            });
        });
    }
    for (std::size_t at = 0; at < m_funderChecks.size(); ++at) {
        auto* check = m_funderChecks[at];
        check->setVisible(at < funders.size());
        if (at >= funders.size())
            continue;
        const auto& funder = funders[at];
        check->setObjectName(QStringLiteral("funder-") + qString(funder.memberID));
        check->setProperty("memberID", qString(funder.memberID));
        check->setText(QString{funder.name}.replace(QLatin1Char{'&'}, QStringLiteral("&&")));
        check->setAccessibleName(funder.name);
        check->setChecked(funder.isOn);
        check->setEnabled(funder.whyFixed.isEmpty());
        check->setToolTip(funder.whyFixed);
    }
    m_funders->updateGeometry();
}

void AccountFormBody::presentAgreement(const Agreement& agreement,
                                       const std::optional<AccountFormContent::Acknowledgement>& content)
{
    agreement.box->setVisible(content.has_value());
    if (!content)
        return;
    agreement.banner->present(Banner::Kind::warn, content->text);
    agreement.check->setText(content->check);
    agreement.check->setChecked(content->isGiven);
}

bool AccountFormBody::isWithinLimits() const
{
    return m_name->isWithinLimit();
}
