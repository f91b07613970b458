#include "LedgerUI/Screens/Categories/CategoryEditing.h"

#include <algorithm>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Categories/CategoryPins.h"
#include "LedgerUI/Presentation/Categories/CategoryWords.h"
#include "LedgerUI/Screens/Categories/CategoryEditor.h"

CategoryEditing::CategoryEditing(LedgerStore& store, CategoryEditor& editor)
    : QObject{&editor}, m_store{store}, m_editor{editor}
{
    connect(&editor, &CategoryEditor::changed, this, &CategoryEditing::edit);
    connect(&editor, &CategoryEditor::saveWanted, this, &CategoryEditing::save);
    connect(&editor, &CategoryEditor::archiveWanted, this, &CategoryEditing::toggleArchived);
    connect(&editor, &CategoryEditor::pinWanted, this, &CategoryEditing::pin);
}

const Category* CategoryEditing::category(const LedgerSnapshot& snapshot) const
{
    const auto found = std::ranges::find(snapshot.categories, m_form.id, &Category::id);
    return m_form.id.empty() || found == snapshot.categories.end() ? nullptr : &*found;
}

void CategoryEditing::begin(const CategoryForm& form)
{
    m_creation.reset();
    m_isUncertain = false;
    m_saved = form;
    edit(form);
}

void CategoryEditing::rebase(const CategoryForm& now)
{
    m_form = m_form.rebased(m_saved, now);
    m_saved = now;
}

void CategoryEditing::edit(const CategoryForm& form)
{
    m_form = form;
    m_isChecked = false;
    present();
    Q_EMIT edited();
}

void CategoryEditing::present()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    const auto& locale = InterfaceLanguage::tag();
    const auto refusal = m_isChecked ? m_form.whyNot(m_saved, *snapshot) : std::nullopt;
    const auto* known = category(*snapshot);
    const bool isArchived = known && known->archived;
    const auto kept = known ? CategoryText::whyNotArchived(*known, !isArchived, *snapshot) : std::nullopt;
    const bool isPinned = m_store.isCategorySelected(m_form.id);
    const bool isFull = CategoryPins::of(*snapshot, m_form.kind).size() >= CategoryPins::maximum;
    const auto pinsFull = word(categoryWords(), "pinsFull", {std::to_string(CategoryPins::maximum)});
    m_editor.present({.form = m_form,
                      .saved = m_saved,
                      .refusal = m_isUncertain ? word(EntryWords::words(), "uncertain")
                                 : refusal     ? CategoryText::refusal(*refusal, locale)
                                               : QString{},
                      .isSent = m_creation.has_value(),
                      .isUncertain = m_isUncertain,
                      .isArchived = isArchived,
                      .whyNotArchived = kept ? CategoryText::refusal(*kept, locale) : QString{},
                      .isPinned = isPinned,
                      .whyNotPinned = isFull && !isPinned ? pinsFull : QString{},
                      .isIdle = !m_store.isBusy()},
                     *snapshot);
}

void CategoryEditing::save()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot || !hasChanges() || m_store.isBusy())
        return;
    if (m_creation) {
        create();
        return;
    }
    m_isChecked = true;
    if (m_form.whyNot(m_saved, *snapshot)) {
        present();
        m_editor.focusNames();
        return;
    }
    if (m_form.id.empty()) {
        m_creation = m_form.creation();
        create();
        return;
    }
    QCoro::connect(m_store.updateCategory(m_form.id, m_form.update(m_saved)), this,
                   [this, id = m_form.id](const Result<void>& sent) {
                       if (sent)
                           finish(id);
                   });
}

/// When nobody knows whether the category was made, only the very same can be sent again.
void CategoryEditing::create()
{
    QCoro::connect(m_store.createCategory(*m_creation), this, [this](const Result<std::string>& made) {
        m_isUncertain = !made && isOutcomeUnknown(made.error());
        if (!m_isUncertain)
            m_creation.reset();
        else
            m_store.dismissMessages(); // said in the form
        if (made)
            finish(*made);
        else
            present();
    });
    present();
}

void CategoryEditing::finish(const std::string& id)
{
    if (!m_store.snapshot())
        return;
    m_isChecked = false;
    const auto title = m_form.title(InterfaceLanguage::tag()).toStdString();
    Q_EMIT saved(id);
    Q_EMIT done(word(categoryWords(), "saved", {title}));
}

void CategoryEditing::toggleArchived()
{
    const auto snapshot = m_store.snapshot();
    const auto* known = snapshot ? category(*snapshot) : nullptr;
    if (!known)
        return;
    CategoryUpdate update;
    update.archived = !known->archived;
    const auto name = m_saved.title(InterfaceLanguage::tag()).toStdString();
    const bool archives = *update.archived;
    QCoro::connect(m_store.updateCategory(known->id, std::move(update)), this,
                   [this, name, archives](const Result<void>& sent) {
                       if (sent)
                           Q_EMIT done(word(categoryWords(), archives ? "archived" : "restored", {name}));
                   });
}

void CategoryEditing::pin(bool isPinned)
{
    QCoro::connect(m_store.setCategorySelected(m_form.id, isPinned), this, [this](const Result<void>&) { present(); });
}
