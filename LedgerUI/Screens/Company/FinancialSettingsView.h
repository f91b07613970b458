#pragma once

#include "LedgerUI/Presentation/Company/FinancialSettingsForm.h"
#include "LedgerUI/Screens/Company/CompanyTab.h"

class Banner;
class Chip;
class ColorStrip;
class PrimaryButton;
class QPushButton;
class SettingRow;
class SidebarListing;
class TextLabel;
class ToggleSwitch;

/// How the books are kept. The switches wait for Save; a command of unknown outcome stays here until it is settled,
/// and only it can be sent again.
class FinancialSettingsView final : public CompanyTab {
    Q_OBJECT
public:
    explicit FinancialSettingsView(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] PageView::StatusContext statusContext() const override;
    [[nodiscard]] std::size_t unsavedChanges() const override;
    void discardChanges() override;
    [[nodiscard]] QList<QWidget*> panes() const override { return {m_column}; }

protected:
    void present() override;

private:
    void buildLayout();
    QWidget* buildFoot();
    void bind();
    void adopt();
    void presentStart();
    void presentOpenings();
    void presentSwitches();
    void presentBanner();
    void edit();
    void setUp();
    void recordOpening();
    void importEntries();
    void showImported();
    void save();
    /// The command that is to be sent, unless something is wrong, which is said then.
    std::optional<FinancialSettingsCommand> checked();
    void send(const FinancialSettingsCommand& command);
    void finish(const Result<void>& reply);
    void reload();

    SnapshotPointer m_shown; // what `m_openings` was counted in
    FinancialSettingsText::Openings m_openings;
    SwitchesForm m_saved; // as the switches stood when the draft began
    SwitchesSubmission m_submission;
    std::vector<std::string> m_imported; // by the dialog that is open; the ledger is to show them
    QWidget* m_column = nullptr;
    Banner* m_banner = nullptr;
    QPushButton* m_reload = nullptr;
    SettingRow* m_startRow = nullptr;
    TextLabel* m_startDay = nullptr;
    Chip* m_confirmed = nullptr;
    QPushButton* m_setUp = nullptr;
    SettingRow* m_openingsRow = nullptr;
    QPushButton* m_recordOpening = nullptr;
    SettingRow* m_contributionsRow = nullptr;
    ToggleSwitch* m_contributions = nullptr;
    SettingRow* m_dividendsRow = nullptr;
    ToggleSwitch* m_dividends = nullptr;
    SidebarListing* m_listing = nullptr;
    SettingRow* m_colorsRow = nullptr;
    SettingRow* m_importRow = nullptr;
    QPushButton* m_import = nullptr;
    ColorStrip* m_colors = nullptr;
    QPushButton* m_changeColors = nullptr;
    TextLabel* m_revision = nullptr;
    QPushButton* m_revert = nullptr;
    PrimaryButton* m_save = nullptr;
};
