#pragma once

#include <set>
#include <string>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Components/Dialogs/FormDialog.h"

class LedgerStore;
class QComboBox;
class QListWidget;
class QListWidgetItem;
class SearchField;
class TextLabel;

/// Ready-made categories to choose from: groups at the left, those of the chosen one at the right, or what a search
/// finds. They are added one after the other; what could not be added stays ticked. Deletes itself when it closes.
class PresetDialog final : public FormDialog {
    Q_OBJECT
public:
    PresetDialog(LedgerStore& store, std::string kind, QWidget* parent);

Q_SIGNALS:
    /// So many categories were added.
    void added(std::size_t count);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildBody();
    void bind();
    void present();
    void presentGroups();
    void presentPresets();
    void presentFoot();
    void presentParents();
    void tick(QListWidgetItem* item);
    void addNext();

    LedgerStore& m_store;
    std::string m_kind;
    std::set<std::string, std::less<>> m_chosen;
    std::vector<CategoryCreate> m_waiting; // those that are being added
    std::size_t m_added = 0;
    SearchField* m_search = nullptr;
    TextLabel* m_underHead = nullptr;
    QComboBox* m_under = nullptr;
    QListWidget* m_groups = nullptr;
    QListWidget* m_presets = nullptr;
};
