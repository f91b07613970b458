#pragma once

#include "LedgerUI/Screens/Settings/SettingsSection.h"

class FormField;
class QLineEdit;
class QPushButton;
class TextLabel;

/// Who is signed in where, and signing out.
class SessionSection final : public SettingsSection {
    Q_OBJECT
public:
    SessionSection(LedgerStore& store, QWidget* parent);

protected:
    void present() override;

private:
    QLineEdit* m_person = nullptr;
    QLineEdit* m_service = nullptr;
    FormField* m_personField = nullptr;
    FormField* m_serviceField = nullptr;
    TextLabel* m_hint = nullptr;
    QPushButton* m_signOut = nullptr;
};
