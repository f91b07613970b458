#pragma once

#include <string>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Categories/CategoryForm.h"

class CategoryEditing;
class CategoryEditor;

/// One category, new or known, over the form that is in need of it. Closes once it is saved and deletes itself; open it
/// with `open()`.
class CategoryDialog final : public CommandForm {
    Q_OBJECT
public:
    CategoryDialog(LedgerStore& store, const CategoryForm& form, QWidget* parent);

Q_SIGNALS:
    void saved(const std::string& id);

private:
    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void presentFrame();

    CategoryEditor* m_editor = nullptr;
    CategoryEditing* m_editing = nullptr;
};
