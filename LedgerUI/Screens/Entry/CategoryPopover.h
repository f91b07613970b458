#pragma once

#include <string>
#include <vector>

#include <QFrame>
#include <QPointer>

#include "LedgerUI/Presentation/Entry/EntryCategories.h"

class QListView;
class QStandardItemModel;
class SearchField;
class TextLabel;

/// All categories of a kind on two levels, with a search above them. Up and Down move, Return chooses, Esc closes; the
/// keys that confirm the form choose too, or close where nothing fits. Lies over its window and belongs to it.
class CategoryPopover final : public QFrame {
    Q_OBJECT
public:
    explicit CategoryPopover(QWidget* parent);

    /// Opens over `anchor`, as wide as it, with `text` already typed. `opener` has the focus back when it closes.
    void openAt(QWidget* anchor, QWidget* opener, SnapshotPointer snapshot, std::string kind, const QString& text);
    void dismiss();

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
    QPointer<QWidget> m_opener;
    SnapshotPointer m_snapshot;
    std::string m_kind;
};
