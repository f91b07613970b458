#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"

class QComboBox;
class QListWidget;
class QListWidgetItem;
class SearchField;
class TextLabel;

/// Ready-made categories to choose from: groups at the left, those of the chosen one at the right, or what a search
/// finds. They are added one after the other; what could not be added stays ticked, and is locked while nobody knows
/// whether it was. Deletes itself when it closes.
class PresetDialog final : public CommandForm {
    Q_OBJECT
public:
    PresetDialog(LedgerStore& store, std::string kind, QWidget* parent);

Q_SIGNALS:
    /// So many categories were added.
    void added(std::size_t count);

private:
    using Ticks = std::set<std::string, std::less<>>;

    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void bind();
    void presentGroups();
    void presentPresets();
    void presentFrame();
    void presentParents();
    void tick(QListWidgetItem* item);
    void submit();
    std::optional<CategoryCreate> takeNext();
    void send(const CategoryCreate& category);
    void finish(const Result<std::string>& made);

    std::string m_kind;
    Submission<Ticks, CategoryCreate> m_submission{Ticks{}}; // of the one that is being added
    std::vector<CategoryCreate> m_waiting;                   // those after it
    std::size_t m_added = 0;
    SearchField* m_search = nullptr;
    TextLabel* m_underHead = nullptr;
    QComboBox* m_under = nullptr;
    QListWidget* m_groups = nullptr;
    QListWidget* m_presets = nullptr;
};
