#pragma once

#include <string>

#include <QObject>

class EntryFormBody;
class LedgerStore;
class QWidget;
struct CategoryForm;

/// What the entry form's list of categories can do beside a choice: pin one, and change one or make a new one in a
/// dialog over the form.
class CategoryCommands final : public QObject {
    Q_OBJECT
public:
    /// Lives with `form`; carries out what `body` asks for.
    CategoryCommands(LedgerStore& store, const EntryFormBody& body, QWidget& form);

    /// The kind of entry that a new category is for.
    void setKind(const std::string& kind) { m_kind = kind; }

Q_SIGNALS:
    void saved(const std::string& id);

private:
    void pin(const std::string& id, bool isPinned);
    void change(const std::string& id);
    void create(const QString& name);
    void open(const CategoryForm& form);

    LedgerStore& m_store;
    QWidget& m_form;
    std::string m_kind;
};
