#pragma once

#include "LedgerUI/Components/Fields/FieldMap.h"
#include "LedgerUI/Presentation/Settings/PasswordDraft.h"
#include "LedgerUI/Screens/Settings/SettingsSection.h"

class FormField;
class PasswordField;
class QLineEdit;
class QPushButton;
class TextLabel;

/// The own name, and the own password. The name that was typed outlives the session, passwords do not.
class ProfileSection final : public SettingsSection {
    Q_OBJECT
public:
    ProfileSection(LedgerStore& store, QWidget* parent);

    /// Whether something is typed that is not saved.
    [[nodiscard]] bool hasChanges() const;
    /// The session is over. What became of the passwords is said when the section is seen again.
    void dropPasswords();

protected:
    void present() override;

private:
    void buildLayout();
    void bind();
    [[nodiscard]] bool isRenamed() const;
    [[nodiscard]] bool hasPasswords() const;
    void emptyPasswords();
    void askForPasswordsAgain();
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
    QString m_savedName;
    bool m_hasDropped = false;   // passwords that were typed and not saved
    bool m_mayBeChanged = false; // the outcome of the last attempt is not known
};
