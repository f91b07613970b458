#pragma once

#include <QWidget>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Templates/TemplateForm.h"

class AccountPicker;
class FormField;
class TextLabel;
class QComboBox;

/// What a template says of its entry beyond texts and amount: the kind, which stands, the accounts and the category.
class TemplateEntryFields final : public QWidget {
    Q_OBJECT
public:
    explicit TemplateEntryFields(QWidget* parent = nullptr);

    /// What there is to choose from, and what is chosen.
    void present(const TemplateEntry& entry, const LedgerSnapshot& snapshot, const std::string& locale);

    [[nodiscard]] FormField& account() const { return *m_accountField; }
    [[nodiscard]] FormField& target() const { return *m_targetField; }
    [[nodiscard]] FormField& category() const { return *m_categoryField; }

Q_SIGNALS:
    void accountChosen(const std::string& id);
    void targetChosen(const std::string& id);
    void categoryChosen(const std::string& id);

private:
    void presentCategories(const TemplateEntry& entry, const LedgerSnapshot& snapshot, const std::string& locale);

    TextLabel* m_kind = nullptr;
    AccountPicker* m_account = nullptr;
    AccountPicker* m_target = nullptr;
    QComboBox* m_category = nullptr;
    FormField* m_accountField = nullptr;
    FormField* m_targetField = nullptr;
    FormField* m_categoryField = nullptr;
};
