#pragma once

#include "LedgerUI/Components/Fields/FieldMap.h"
#include "LedgerUI/Presentation/Settings/PasswordDraft.h"
#include "LedgerUI/Screens/Settings/SettingsSection.h"

class FormField;
class PasswordField;
class QLineEdit;
class QPushButton;
class TextLabel;

/// The own name, and the own password.
class ProfileSection final : public SettingsSection {
    Q_OBJECT
public:
    ProfileSection(LedgerStore& store, QWidget* parent);

protected:
    void present() override;

private:
    void buildLayout();
    void bind();
    void saveName();
    void savePassword();
    void finishPassword(const Result<void>& saved);
    void complain(const PasswordDraft::Messages& messages);
    [[nodiscard]] PasswordDraft draft() const;

    QLineEdit* m_name = nullptr;
    FormField* m_nameField = nullptr;
    TextLabel* m_nameHint = nullptr;
    QPushButton* m_saveName = nullptr;
    TextLabel* m_title = nullptr;
    PasswordField* m_current = nullptr;
    PasswordField* m_chosen = nullptr;
    FormField* m_currentField = nullptr;
    FormField* m_chosenField = nullptr;
    TextLabel* m_passwordHint = nullptr;
    QPushButton* m_savePassword = nullptr;
    FieldMap<PasswordDraft::Field> m_fields;
    bool m_isNamePresented = false;
};
