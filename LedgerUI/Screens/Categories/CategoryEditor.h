#pragma once

#include <map>
#include <string>

#include <QFrame>

#include "LedgerUI/Presentation/Categories/CategoryForm.h"

class ElidedLabel;
class FieldError;
class IconGrid;
class LimitedEdit;
class PrimaryButton;
class QCheckBox;
class QComboBox;
class QPushButton;
class TextLabel;

/// One category closely: where it stands, its names, its icon, and what can be done with it. It holds no form of its
/// own; what a person changes is announced as the form that it would make.
class CategoryEditor final : public QFrame {
    Q_OBJECT
public:
    explicit CategoryEditor(QWidget* parent = nullptr);

    /// What the editor shows.
    struct Content {
        CategoryForm form;
        CategoryForm saved;
        QString refusal;     // what keeps it from being saved, once that was tried
        bool isSent = false; // and the reply is not there
        QString uncertain;   // nor will it come, which this says: only the same can be sent again
        bool isArchived = false;
        QString whyNotArchived; // what keeps it from being archived or restored
        bool isPinned = false;
        QString whyNotPinned;
        bool isIdle = true;
    };
    void present(const Content& content, const LedgerSnapshot& snapshot);
    void focusNames();
    /// The name in the language of the interface.
    [[nodiscard]] LimitedEdit& firstName() const;
    /// Without its foot, for a dialog that has one and says by itself how the sending stands: the button that disables
    /// and restores, to be placed there.
    QPushButton* takeFoot();

Q_SIGNALS:
    void changed(const CategoryForm& form);
    void saveWanted();
    void archiveWanted();
    void pinWanted(bool isPinned);

private:
    void buildLayout();
    QWidget* buildFoot();
    void bind();
    void presentParents(const LedgerSnapshot& snapshot);
    void presentNames();

    CategoryForm m_form;
    ElidedLabel* m_title = nullptr;
    TextLabel* m_parentHead = nullptr;
    QComboBox* m_parent = nullptr;
    TextLabel* m_namesHead = nullptr;
    std::map<std::string, TextLabel*> m_languages;
    std::map<std::string, LimitedEdit*> m_names;
    FieldError* m_error = nullptr;
    QWidget* m_foot = nullptr;
    TextLabel* m_iconHead = nullptr;
    IconGrid* m_icons = nullptr;
    QCheckBox* m_pin = nullptr;
    QPushButton* m_archive = nullptr;
    PrimaryButton* m_save = nullptr;
};
