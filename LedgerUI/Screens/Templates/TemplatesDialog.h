#pragma once

#include <functional>

#include <QDialog>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"

class Banner;
class EmptyState;
class LedgerStore;
class PlainTable;
class QHBoxLayout;
class QPushButton;
class QStackedWidget;
class TextLabel;
struct EntryTemplate;
struct EntryTemplateList;

/// The templates with what is due by them: a person records, skips, changes and removes here. Recording closes it and
/// opens the entry form, which a person saves. Deletes itself when it closes; open it with `open()`.
class TemplatesDialog final : public QDialog {
    Q_OBJECT
public:
    using Recording = std::function<void(const EntryForm::Opening& opening)>;

    TemplatesDialog(LedgerStore& store, Recording record, QWidget* parent);

    /// What the entry form opens with for a template; with a due day that is settled by the entry.
    static EntryForm::Opening openingOf(const EntryTemplate& kept, const std::optional<std::string>& dueDay);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildLayout();
    QHBoxLayout* buildButtons();
    void bind();
    void present();
    void presentButtons();
    [[nodiscard]] const EntryTemplate* chosen() const;
    void recordChosen();
    void changeChosen();
    void removeChosen();
    void setDay(const std::string& day, bool skipped);
    void finish(const Result<EntryTemplateList>& reply);

    LedgerStore& m_store;
    Recording m_record;
    Banner* m_banner = nullptr;
    PlainTable* m_table = nullptr;
    TextLabel* m_hint = nullptr;
    EmptyState* m_none = nullptr;
    QStackedWidget* m_stack = nullptr;
    QPushButton* m_new = nullptr;
    QPushButton* m_recordButton = nullptr;
    QPushButton* m_skip = nullptr;
    QPushButton* m_undo = nullptr;
    QPushButton* m_change = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_close = nullptr;
};
