#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <QWidget>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"

class ChoiceField;
class DayEdit;
class FieldError;
class FormField;
class TextLabel;
class QCheckBox;
class SegmentedControl;

/// What a person chooses of the ledger before it is exported. It shows the form that it is given and asks for another
/// one.
class LedgerExportFields final : public QWidget {
    Q_OBJECT
public:
    explicit LedgerExportFields(std::vector<LedgerExportForm::Source> sources, QWidget* parent);

    struct Shown {
        const LedgerExportForm& form;
        const LedgerSnapshot& snapshot;
        const std::string& today;
        LedgerExport::Problems problems;
        std::size_t selected = 0;       // entries on the page
        std::vector<PrintedFact> facts; // how the page is narrowed, where its entries are exported
        LedgerExport::Narrowing onPage; // to what
    };
    void present(const Shown& shown);
    [[nodiscard]] QWidget& first() const;

Q_SIGNALS:
    void edited(const LedgerExportForm& form);

private:
    struct Kind {
        std::string kind;
        QCheckBox* box = nullptr;
    };

    QWidget* buildDays(QWidget* parent);
    QWidget* buildKinds(QWidget* parent);
    QWidget* buildSource(QWidget* parent);
    QWidget* buildChoice(QWidget* parent);
    QWidget* buildReceipts(QWidget* parent);
    void bindParts();
    void presentSource(const Shown& shown);
    void presentChoices(const Shown& shown);
    [[nodiscard]] QString nameOf(const std::string& accountID) const;
    void presentKinds(const LedgerSnapshot& snapshot);
    [[nodiscard]] static QString sourceText(LedgerExportForm::Source source, std::size_t selected);

    std::vector<LedgerExportForm::Source> m_sources;
    LedgerExportForm m_form;                       // in sight
    std::map<std::string, QString> m_accountNames; // of all that were seen since it was opened
    SegmentedControl* m_source = nullptr;
    FormField* m_sourceField = nullptr;
    TextLabel* m_facts = nullptr;
    QWidget* m_choice = nullptr; // the fields of what is chosen here
    TextLabel* m_daysLabel = nullptr;
    DayEdit* m_firstDay = nullptr;
    DayEdit* m_lastDay = nullptr;
    TextLabel* m_to = nullptr;
    FieldError* m_firstDayError = nullptr;
    FieldError* m_lastDayError = nullptr;
    ChoiceField* m_accounts = nullptr;
    FormField* m_accountsField = nullptr;
    TextLabel* m_accountsHint = nullptr;
    ChoiceField* m_currencies = nullptr;
    FormField* m_currenciesField = nullptr;
    TextLabel* m_kindsLabel = nullptr;
    std::vector<Kind> m_kinds;
    FieldError* m_kindsError = nullptr;
    QCheckBox* m_receiptIndex = nullptr;
    TextLabel* m_receiptHint = nullptr;
};
