#include "LedgerUI/Screens/Entry/CategoryCommands.h"

#include <algorithm>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Categories/CategoryForm.h"
#include "LedgerUI/Screens/Categories/CategoryDialog.h"
#include "LedgerUI/Screens/Entry/EntryFormBody.h"

CategoryCommands::CategoryCommands(LedgerStore& store, const EntryFormBody& body, QWidget& form)
    : QObject{&form}, m_store{store}, m_form{form}
{
    connect(&body, &EntryFormBody::categoryPinWanted, this, &CategoryCommands::pin);
    connect(&body, &EntryFormBody::categoryEditWanted, this, &CategoryCommands::change);
    connect(&body, &EntryFormBody::categoryCreationWanted, this, &CategoryCommands::create);
}

void CategoryCommands::pin(const std::string& id, bool isPinned)
{
    // An operation that runs is over in a moment; a refusal of this one says so itself.
    if (!m_store.isBusy())
        QCoro::connect(m_store.setCategorySelected(id, isPinned), this, [](const Result<void>&) {});
}

void CategoryCommands::change(const std::string& id)
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    const auto found = std::ranges::find(snapshot->categories, id, &Category::id);
    if (found != snapshot->categories.end())
        open(CategoryForm::of(*found));
}

void CategoryCommands::create(const QString& name)
{
    auto form = CategoryForm::fresh(m_kind);
    if (!name.isEmpty())
        form.names[InterfaceLanguage::tag()] = name.toStdString();
    open(form);
}

void CategoryCommands::open(const CategoryForm& form)
{
    auto* dialog = new CategoryDialog(m_store, form, &m_form);
    connect(dialog, &CategoryDialog::saved, this, &CategoryCommands::saved);
    dialog->open();
}
