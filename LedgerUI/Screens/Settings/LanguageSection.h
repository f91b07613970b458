#pragma once

#include "LedgerUI/Screens/Settings/SettingsSection.h"

class QButtonGroup;
class QRadioButton;
class TextLabel;

/// The interface language: one of the four, or the system's. It takes effect at once.
class LanguageSection final : public SettingsSection {
    Q_OBJECT
public:
    LanguageSection(LedgerStore& store, QWidget* parent);

protected:
    void present() override;

private:
    TextLabel* m_title = nullptr;
    QButtonGroup* m_choices = nullptr; // by the place in AppLanguage::supportedLocales; the system's behind them
    QRadioButton* m_system = nullptr;
    TextLabel* m_hint = nullptr;
};
