#pragma once

#include <string>
#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Entry/EntryCategories.h"

class CategoryPopover;
class CategoryTile;
class FieldError;
class QGridLayout;
class QToolButton;
class TextLabel;

/// Chooses a category: up to eight tiles in two rows, and all of them in a popover. Arrows move between tiles, Space
/// chooses, a letter starts the search.
class CategoryField final : public QWidget {
    Q_OBJECT
public:
    explicit CategoryField(QWidget* parent = nullptr);

    /// What there is to choose from.
    void offer(SnapshotPointer snapshot, const std::string& kind);
    void present(const std::string& chosen, const QString& path, const QString& message);
    /// Where focus goes when a category is wanted.
    [[nodiscard]] QWidget* focusTarget() const;
    [[nodiscard]] FieldError& error() const { return *m_error; }

Q_SIGNALS:
    void categoryChosen(const std::string& id);
    /// Chosen in the list of all categories, which is closed again: what comes next is beyond this field.
    void finished();
    void pinWanted(const std::string& id, bool isPinned);
    void editWanted(const std::string& id);
    void creationWanted(const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void offerTiles();
    void presentTiles();
    void openAll(const QString& text);
    void moveFrom(CategoryTile* tile, int step);

    SnapshotPointer m_snapshot;
    std::string m_kind;
    std::string m_chosen;
    std::vector<EntryCategory> m_offered;
    TextLabel* m_label = nullptr;
    QToolButton* m_all = nullptr;
    QWidget* m_tileArea = nullptr;
    std::vector<CategoryTile*> m_tiles;
    FieldError* m_error = nullptr;
    TextLabel* m_path = nullptr;
    TextLabel* m_pinned = nullptr;
    CategoryPopover* m_popover = nullptr;
};
