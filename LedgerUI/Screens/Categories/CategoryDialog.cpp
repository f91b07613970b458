#include "LedgerUI/Screens/Categories/CategoryDialog.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QPushButton>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Categories/CategoryEditing.h"
#include "LedgerUI/Screens/Categories/CategoryEditor.h"

namespace {

constexpr int dialogWidth = 440;
constexpr int editorHeight = 500; // its fields scroll

}

CategoryDialog::CategoryDialog(LedgerStore& store, const CategoryForm& form, QWidget* parent)
    : CommandForm{store, parent}
{
    setObjectName(QStringLiteral("categoryDialog"));
    buildBody();
    m_editing = new CategoryEditing(store, *m_editor);
    connect(this, &FormDialog::confirmed, m_editing, &CategoryEditing::save);
    connect(m_editing, &CategoryEditing::presented, this, &CategoryDialog::presentFrame);
    connect(m_editing, &CategoryEditing::saved, this, [this](const std::string& id) {
        Q_EMIT saved(id);
        leave();
    });
    connect(m_editing, &CategoryEditing::failed, this, [this] {
        sayHere();
        firstField().setFocus(Qt::OtherFocusReason);
    });
    connect(&store, &LedgerStore::isBusyChanged, this, &CategoryDialog::present);
    m_editing->begin(form.id.empty() ? CategoryForm::fresh(form.kind) : form);
    m_editing->edit(form);
}

void CategoryDialog::buildBody()
{
    m_editor = new CategoryEditor(bodyPlace());
    m_editor->setMinimumHeight(editorHeight);
    auto* part = new QWidget(this);
    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_editor->takeFoot());
    row->addStretch();
    setFootPart(part);
    setBody(m_editor, dialogWidth);
}

void CategoryDialog::present()
{
    if (isElsewhere())
        presentFrame(); // the categories of its own company stay
    else
        m_editing->present();
}

void CategoryDialog::presentFrame()
{
    const auto& submission = m_editing->submission();
    setWindowTitle(word(categoryWords(), submission.form().id.empty() ? "new" : "edit"));
    presentStanding({.stage = submission.stage(),
                     .refusal = submission.refusal(),
                     .confirm = word(categoryWords(), "save"),
                     .hasChanges = m_editing->hasChanges()});
    if (store().isBusy() || !m_editing->hasChanges())
        confirmButton().setEnabled(false);
}

void CategoryDialog::adoptSnapshot()
{
    takeSnapshot();
    const auto& categories = snapshot()->categories;
    const auto found = std::ranges::find(categories, m_editing->form().id, &Category::id);
    if (!m_editing->form().id.empty() && found != categories.end())
        m_editing->rebase(CategoryForm::of(*found));
    present();
}

QWidget& CategoryDialog::firstField() const
{
    return m_editing->submission().isUncertain() ? static_cast<QWidget&>(confirmButton()) : m_editor->firstName();
}
