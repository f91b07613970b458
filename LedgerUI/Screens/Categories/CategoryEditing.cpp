#include "LedgerUI/Screens/Categories/CategoryEditing.h"

#include <algorithm>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Categories/CategoryPins.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
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
    const auto found = std::ranges::find(snapshot.categories, form().id, &Category::id);
    return form().id.empty() || found == snapshot.categories.end() ? nullptr : &*found;
}

void CategoryEditing::begin(const CategoryForm& form)
{
    m_submission = CategorySubmission{form};
    m_saved = form;
    edit(form);
}

void CategoryEditing::rebase(const CategoryForm& now)
{
    if (!m_submission.isEditing())
        return;
    m_submission.adopt(form().rebased(m_saved, now));
    m_saved = now;
}

void CategoryEditing::edit(const CategoryForm& form)
{
    m_submission.edit(form);
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
    const auto refusal = m_isChecked && m_submission.isEditing() ? form().whyNot(m_saved, *snapshot) : std::nullopt;
    const auto* known = category(*snapshot);
    const bool isArchived = known && known->archived;
    const auto kept = known ? CategoryText::whyNotArchived(*known, !isArchived, *snapshot) : std::nullopt;
    const bool isPinned = m_store.isCategorySelected(form().id);
    const bool isFull = CategoryPins::of(*snapshot, form().kind).size() >= CategoryPins::maximum;
    const auto pinsFull = word(categoryWords(), "pinsFull", {std::to_string(CategoryPins::maximum)});
    const auto uncertain = FailureText::unconfirmed(word(commandWords(), "uncertain"), m_submission.refusal(), locale);
    m_editor.present({.form = form(),
                      .saved = m_saved,
                      .refusal = refusal ? CategoryText::refusal(*refusal, locale) : QString{},
                      .isSent = !m_submission.isEditing(),
                      .uncertain = m_submission.isUncertain() ? uncertain : QString{},
                      .isArchived = isArchived,
                      .whyNotArchived = kept ? CategoryText::refusal(*kept, locale) : QString{},
                      .isPinned = isPinned,
                      .whyNotPinned = isFull && !isPinned ? pinsFull : QString{},
                      .isIdle = !m_store.isBusy()},
                     *snapshot);
    Q_EMIT presented();
}

void CategoryEditing::save()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot || !hasChanges() || m_store.isBusy())
        return;
    if (const auto* command = m_submission.submit([&] { return checked(*snapshot); }))
        send(*command);
}

std::optional<CategoryCommand> CategoryEditing::checked(const LedgerSnapshot& snapshot)
{
    m_isChecked = true;
    if (form().whyNot(m_saved, snapshot)) {
        present();
        m_editor.focusNames();
        return {};
    }
    if (form().id.empty())
        return form().creation();
    return CategoryChange{form().id, form().update(m_saved)};
}

/// While nobody knows what became of the command, only the very same can be sent again.
void CategoryEditing::send(const CategoryCommand& command)
{
    if (const auto* change = std::get_if<CategoryChange>(&command))
        QCoro::connect(m_store.updateCategory(change->id, change->update), this,
                       [this, id = change->id](const Result<void>& sent) {
                           finish(sent ? Result<std::string>{id} : std::unexpected{sent.error()});
                       });
    else
        QCoro::connect(m_store.createCategory(std::get<CategoryCreate>(command)), this,
                       [this](const Result<std::string>& made) { finish(made); });
    present();
}

void CategoryEditing::finish(const Result<std::string>& sent)
{
    if (!m_submission.isSaving())
        return; // it was left meanwhile
    if (!sent)
        return fail(sent.error());
    m_submission.succeed();
    m_isChecked = false;
    m_saved = form();
    const auto title = form().title(InterfaceLanguage::tag()).toStdString();
    Q_EMIT saved(*sent);
    Q_EMIT done(word(categoryWords(), "saved", {title}));
}

void CategoryEditing::fail(const Failure& failure)
{
    m_submission.fail(failure);
    if (isOutcomeUnknown(failure))
        m_store.dismissMessages(); // said in the form
    const auto snapshot = m_store.snapshot();
    if (const auto* known = snapshot ? category(*snapshot) : nullptr)
        rebase(CategoryForm::of(*known));
    present();
    Q_EMIT failed();
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
    QCoro::connect(m_store.setCategorySelected(form().id, isPinned), this, [this](const Result<void>&) { present(); });
}
