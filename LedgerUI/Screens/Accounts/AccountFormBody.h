#pragma once

#include <functional>
#include <vector>

#include <QWidget>

#include "LedgerUI/Components/Fields/FieldMap.h"
#include "LedgerUI/Presentation/Accounts/AccountForm.h"

class AccountCurrencies;
class AccountPicker;
class Banner;
class ChoiceTile;
class FormField;
class LimitedEdit;
class QButtonGroup;
class QCheckBox;
class TextLabel;
class WrapLayout;

/// The fields of an account. What a person changes is said as a change of the draft.
class AccountFormBody final : public QWidget {
    Q_OBJECT
public:
    using Change = std::function<void(AccountDraft& draft)>;

    explicit AccountFormBody(QWidget* parent = nullptr);

    void present(const AccountFormContent& content);
    [[nodiscard]] QWidget* control(AccountField field) const { return m_fields.control(field); }
    [[nodiscard]] QWidget* firstWrong(const AccountFormContent& content) const
    {
        return m_fields.firstOf(content.messages);
    }
    [[nodiscard]] bool isWithinLimits() const;

Q_SIGNALS:
    void edited(AccountField field, const AccountFormBody::Change& change);

private:
    /// A banner with a check that must be set before the form is sent.
    struct Agreement {
        QWidget* box = nullptr;
        Banner* banner = nullptr;
        QCheckBox* check = nullptr;
    };

    void buildName();
    void buildPurposes();
    void buildPeople();
    void buildCurrencies();
    void buildFunders();
    void arrange();
    Agreement agreement(AccountField field, const QString& name, bool AccountDraft::* given);
    void presentFunders(const std::vector<AccountFormContent::Funder>& funders);
    static void presentAgreement(const Agreement& agreement,
                                 const std::optional<AccountFormContent::Acknowledgement>& content);
    /// A label, a part of several controls and its message, one below the other.
    QWidget* group(TextLabel*& label, QWidget* part, AccountField field);

    FieldMap<AccountField> m_fields;
    LimitedEdit* m_name = nullptr;
    FormField* m_nameField = nullptr;
    TextLabel* m_purposeLabel = nullptr;
    QWidget* m_purposes = nullptr;
    QButtonGroup* m_tileGroup = nullptr;
    std::vector<ChoiceTile*> m_tiles;
    AccountPicker* m_responsible = nullptr;
    FormField* m_responsibleField = nullptr;
    AccountPicker* m_return = nullptr;
    FormField* m_returnField = nullptr;
    TextLabel* m_currenciesLabel = nullptr;
    AccountCurrencies* m_currencies = nullptr;
    QWidget* m_currenciesGroup = nullptr;
    TextLabel* m_fundersLabel = nullptr;
    QWidget* m_funders = nullptr;
    WrapLayout* m_funderRow = nullptr;
    std::vector<QCheckBox*> m_funderChecks;
    QWidget* m_fundersGroup = nullptr;
    Banner* m_consequence = nullptr;
    Agreement m_history;
    Agreement m_currency;
};
