#pragma once

#include <map>

#include "LedgerUI/Components/Fields/FieldMap.h"
#include "LedgerUI/Presentation/Company/CompanyProfile.h"
#include "LedgerUI/Screens/Company/CompanyTab.h"

class FormField;
class ChoiceField;
class LimitedEdit;
class PrimaryButton;
class QComboBox;
class QPushButton;
class RemovableChips;
class TextLabel;

/// The company's name, countries and languages. Who does not manage the company reads them, and chooses only the
/// language of mail to themselves.
class ProfileTab final : public CompanyTab {
    Q_OBJECT
public:
    explicit ProfileTab(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] PageView::StatusContext statusContext() const override;
    [[nodiscard]] QList<QWidget*> panes() const override { return {m_form}; }
    [[nodiscard]] std::size_t unsavedChanges() const override;
    void discardChanges() override;

protected:
    void present() override;

private:
    void buildLayout();
    QWidget* buildFields();
    void bind();
    void presentCountries();
    void edit(CompanyProfile draft);
    void save();

    CompanyProfile m_saved; // as the draft began
    CompanyProfile m_draft;
    bool m_isChecked = false; // it was tried to save: what is wrong is said
    FieldMap<CompanyProfile::Field> m_fields;
    QWidget* m_form = nullptr;
    LimitedEdit* m_name = nullptr;
    ChoiceField* m_countries = nullptr;
    RemovableChips* m_chosenCountries = nullptr;
    QComboBox* m_mail = nullptr;
    FormField* m_nameField = nullptr;
    FormField* m_countriesField = nullptr;
    FormField* m_mailField = nullptr;
    TextLabel* m_countriesHint = nullptr;
    TextLabel* m_languagesHead = nullptr;
    TextLabel* m_languages = nullptr;
    TextLabel* m_readOnly = nullptr;
    QPushButton* m_revert = nullptr;
    PrimaryButton* m_save = nullptr;
};
