#pragma once

#include "LedgerUI/Screens/Settings/SettingsSection.h"

class QPushButton;
class TextLabel;

/// How much room the downloaded receipts take on this device, and clearing it.
class ReceiptsSection final : public SettingsSection {
    Q_OBJECT
public:
    ReceiptsSection(LedgerStore& store, QWidget* parent);

protected:
    void present() override;

private:
    void askToClear();

    TextLabel* m_title = nullptr;
    TextLabel* m_size = nullptr;
    QPushButton* m_clear = nullptr;
    TextLabel* m_hint = nullptr;
};
