#pragma once

#include <vector>

#include "LedgerUI/Components/Dialogs/CommandForm.h"

class ProfileSection;
class QStackedWidget;
class QToolButton;
class SettingsSection;
class TextLabel;

/// What concerns only the person and this device: language, profile, receipts, session. Each takes effect by itself,
/// so that there is no one command; what was typed and not saved waits for its member all the same.
class SettingsDialog final : public CommandForm {
    Q_OBJECT
public:
    SettingsDialog(LedgerStore& store, QWidget* parent);

protected:
    void present() override;
    /// Where the person was in the section that is shown, or else its row.
    [[nodiscard]] QWidget& firstField() const override;

private:
    void buildLayout();
    void add(const char* name, const char* glyph, SettingsSection* section);
    void choose(int place);

    QWidget* m_list = nullptr;
    QStackedWidget* m_stack = nullptr;
    ProfileSection* m_profile = nullptr;
    std::vector<QToolButton*> m_sections;
    TextLabel* m_version = nullptr;
};
