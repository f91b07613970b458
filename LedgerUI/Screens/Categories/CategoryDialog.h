#pragma once

#include <string>

#include <QDialog>

#include "LedgerUI/Presentation/Categories/CategoryForm.h"

class CategoryEditing;
class CategoryEditor;
class LedgerStore;

/// One category, new or known, over the form that is in need of it. Closes once it is saved, asks before changes are
/// lost, and deletes itself; open it with `open()`.
class CategoryDialog final : public QDialog {
    Q_OBJECT
public:
    CategoryDialog(LedgerStore& store, const CategoryForm& form, QWidget* parent);

    void reject() override;

Q_SIGNALS:
    void saved(const std::string& id);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void adoptSnapshot();
    void retranslate();

    LedgerStore& m_store;
    CategoryEditor* m_editor = nullptr;
    CategoryEditing* m_editing = nullptr;
};
