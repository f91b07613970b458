#pragma once

#include <optional>
#include <string>

#include <QObject>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Categories/CategoryForm.h"

class CategoryEditor;
class LedgerStore;

/// One category while it is edited: what it was when that began, what a person made of it since, and the commands that
/// save, pin and disable it. It fills an editor and answers to it.
class CategoryEditing final : public QObject {
    Q_OBJECT
public:
    CategoryEditing(LedgerStore& store, CategoryEditor& editor);

    [[nodiscard]] const CategorySubmission& submission() const { return m_submission; }
    [[nodiscard]] const CategoryForm& form() const { return m_submission.form(); }
    [[nodiscard]] bool hasChanges() const { return form() != m_saved; }

    /// Begins with a new category, or with one that there is.
    void begin(const CategoryForm& form);
    /// What a person has begun already.
    void edit(const CategoryForm& form);
    /// What a newer snapshot says of the category, with the changes made on top of it; what was sent stays as it was.
    void rebase(const CategoryForm& now);
    void dropChanges() { begin(m_saved); }
    void present();
    void save();

Q_SIGNALS:
    void edited();
    /// The editor shows how it stands now.
    void presented();
    /// The service has it, and the store's snapshot shows it, unless the session has ended meanwhile.
    void saved(const std::string& id);
    void done(const QString& sentence);
    /// It could not be saved, or nobody knows whether it was.
    void failed();

private:
    /// The command that saves it, unless something is wrong, which the editor says then.
    std::optional<CategoryCommand> checked(const LedgerSnapshot& snapshot);
    void send(const CategoryCommand& command);
    void finish(const Result<std::string>& sent);
    void fail(const Failure& failure);
    void toggleArchived();
    void pin(bool isPinned);
    [[nodiscard]] const Category* category(const LedgerSnapshot& snapshot) const;

    LedgerStore& m_store;
    CategoryEditor& m_editor;
    CategoryForm m_saved; // as the form began
    CategorySubmission m_submission{CategoryForm{}};
    bool m_isChecked = false; // it was tried to save: what is wrong is said
};
