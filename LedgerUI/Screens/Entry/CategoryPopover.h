#pragma once

#include <string>
#include <vector>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"

class QListView;
class QStandardItemModel;
class SearchField;
class TextLabel;

/// All categories of a kind on two levels, with a search above them. Up and Down move, Return chooses, Esc closes; the
/// keys that confirm the form choose too, or close where nothing fits. Covers the tiles that it opens from.
class CategoryPopover final : public Popover {
    Q_OBJECT
public:
    explicit CategoryPopover(QWidget* tiles);

    /// Opens with `text` already typed.
    void openOn(SnapshotPointer snapshot, std::string kind, const QString& text);

Q_SIGNALS:
    void categoryChosen(const std::string& id);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void search();
    [[nodiscard]] bool takeKey(const class QKeyEvent& key);
    void choose(const QModelIndex& index);
    void moveBy(int step);
    void retranslate();

    SearchField* m_search = nullptr;
    QListView* m_list = nullptr;
    TextLabel* m_empty = nullptr;
    QStandardItemModel* m_model = nullptr;
    SnapshotPointer m_snapshot;
    std::string m_kind;
};
