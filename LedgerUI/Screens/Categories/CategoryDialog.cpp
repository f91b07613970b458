#include "LedgerUI/Screens/Categories/CategoryDialog.h"

#include <algorithm>

#include <QEvent>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Categories/CategoryWords.h"
#include "LedgerUI/Presentation/Text/DialogWords.h"
#include "LedgerUI/Screens/Categories/CategoryEditing.h"
#include "LedgerUI/Screens/Categories/CategoryEditor.h"

namespace {

constexpr QSize wanted{440, 600};

}

CategoryDialog::CategoryDialog(LedgerStore& store, const CategoryForm& form, QWidget* parent)
    : QDialog{parent}, m_store{store}
{
    setObjectName(QStringLiteral("categoryDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    m_editor = new CategoryEditor(this);
    m_editor->showCancel();
    m_editing = new CategoryEditing(store, *m_editor);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_editor);
    resize(wanted); // its fields scroll
    connect(m_editor, &CategoryEditor::cancelWanted, this, &CategoryDialog::reject);
    connect(m_editing, &CategoryEditing::saved, this, [this](const std::string& id) {
        Q_EMIT saved(id);
        QDialog::accept();
    });
    connect(&store, &LedgerStore::snapshotChanged, this, &CategoryDialog::adoptSnapshot);
    connect(&store, &LedgerStore::isBusyChanged, m_editing, &CategoryEditing::present);
    m_editing->begin(form.id.empty() ? CategoryForm::fresh(form.kind) : form);
    m_editing->edit(form);
    retranslate();
}

void CategoryDialog::adoptSnapshot()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot) {
        QDialog::reject(); // the session is over: nobody is there to be asked
        return;
    }
    const auto found = std::ranges::find(snapshot->categories, m_editing->form().id, &Category::id);
    if (!m_editing->form().id.empty() && found != snapshot->categories.end())
        m_editing->rebase(CategoryForm::of(*found));
    m_editing->present();
}

void CategoryDialog::reject()
{
    if (!m_editing->hasChanges()) {
        QDialog::reject();
        return;
    }
    MessageDialog::ask({.title = word(categoryWords(), "leaveTitle"),
                        .text = word(dialogWords(), "discardBody"),
                        .confirm = word(dialogWords(), "discard"),
                        .cancel = word(dialogWords(), "keepEditing")},
                       this, [this] { QDialog::reject(); });
}

void CategoryDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        m_editing->present();
    }
    QDialog::changeEvent(event);
}

void CategoryDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    m_editor->focusNames();
}

void CategoryDialog::retranslate()
{
    setWindowTitle(word(categoryWords(), m_editing->form().id.empty() ? "new" : "edit"));
}
