#pragma once

#include <functional>
#include <memory>
#include <string>

#include "LedgerUI/Presentation/Company/CategoryTree.h"
#include "LedgerUI/Screens/Company/CompanyTab.h"

class CategoryEditing;
class CategoryEditor;
class EmptyState;
class PlainTable;
class QCheckBox;
class QStackedWidget;
class SearchField;
class SegmentedControl;

/// The categories of the company as a tree of two levels, and the chosen one closely beside it.
class CategoriesTab final : public CompanyTab {
    Q_OBJECT
public:
    explicit CategoriesTab(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] std::vector<Action> actions() override;
    [[nodiscard]] PageView::StatusContext statusContext() const override;
    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] std::size_t unsavedChanges() const override;
    void discardChanges() override;

protected:
    void present() override;

private:
    void buildLayout();
    QWidget* buildFilters();
    void bind();
    void adopt();
    void presentTable();
    /// Asks first where something would be lost.
    void leaveThen(const std::function<void()>& go);
    void askThenChoose(const std::string& id);
    void take(const std::string& id);
    void begin();
    void showSaved(const std::string& id);
    void fold(const std::string& id, bool folds);
    void send(std::optional<CategoryReorder> order);
    [[nodiscard]] const Category* chosen() const;

    SnapshotPointer m_snapshot; // that `m_directory` and `m_uses` are of
    std::unique_ptr<CategoryDirectory> m_directory;
    CategoryTree::Uses m_uses;
    CategoryTree::View m_view;
    QWidget* m_filters = nullptr;
    SegmentedControl* m_kinds = nullptr;
    SearchField* m_search = nullptr;
    QCheckBox* m_inactive = nullptr;
    QStackedWidget* m_stack = nullptr;
    PlainTable* m_table = nullptr;
    EmptyState* m_none = nullptr;
    CategoryEditor* m_editor = nullptr;
    CategoryEditing* m_editing = nullptr;
};
