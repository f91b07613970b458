#pragma once

#include <vector>

#include "LedgerUI/Components/Dialogs/FormDialog.h"

class LedgerStore;
class QStackedWidget;
class QToolButton;
class SettingsSection;
class TextLabel;

/// What concerns only the person and this device: language, profile, receipts, session. Each takes effect by itself.
class SettingsDialog final : public FormDialog {
    Q_OBJECT
public:
    SettingsDialog(LedgerStore& store, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void add(const char* name, const char* glyph, SettingsSection* section);
    void choose(int place);
    void retranslate();

    LedgerStore& m_store;
    QWidget* m_list = nullptr;
    QStackedWidget* m_stack = nullptr;
    std::vector<QToolButton*> m_sections;
    TextLabel* m_version = nullptr;
};
