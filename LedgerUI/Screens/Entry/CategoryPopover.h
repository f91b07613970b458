#pragma once

#include <string>
#include <vector>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"

class QListView;
class QPushButton;
class QStandardItemModel;
class SearchField;
class TextLabel;

/// All categories of a kind on two levels, with a search above them and below them what can be done with one: pin it,
/// change it, make a new one. Up and Down move, Return chooses, Esc closes; the keys that confirm the form choose too,
/// or close where nothing fits. Covers the tiles that it opens from.
class CategoryPopover final : public Popover {
    Q_OBJECT
public:
    explicit CategoryPopover(QWidget* tiles);

    /// Opens with `text` already typed.
    void openOn(SnapshotPointer snapshot, std::string kind, const QString& text);
    /// Goes on with what a newer snapshot says of the categories.
    void renew(SnapshotPointer snapshot);

Q_SIGNALS:
    void categoryChosen(const std::string& id);
    void pinWanted(const std::string& id, bool isPinned);
    void editWanted(const std::string& id);
    /// A category that is not there yet; `name` is what was searched for.
    void creationWanted(const QString& name);
    void closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void search();
    [[nodiscard]] bool takeKey(const class QKeyEvent& key);
    void choose(const QModelIndex& index);
    void moveBy(int step);
    void buildFoot();
    void presentFoot();
    void togglePin(const QModelIndex& index);
    void retranslate();

    SearchField* m_search = nullptr;
    QListView* m_list = nullptr;
    TextLabel* m_empty = nullptr;
    QStandardItemModel* m_model = nullptr;
    QWidget* m_foot = nullptr;
    TextLabel* m_footHint = nullptr;
    QPushButton* m_pin = nullptr;
    QPushButton* m_edit = nullptr;
    QPushButton* m_create = nullptr;
    SnapshotPointer m_snapshot;
    std::string m_kind;
};
