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
        QString refusal;          // what keeps it from being saved, once that was tried
        bool isSent = false;      // to be made, and the reply is not there
        bool isUncertain = false; // nor will it come: only the same can be sent again
        bool isArchived = false;
        QString whyNotArchived; // what keeps it from being archived or restored
        bool isPinned = false;
        QString whyNotPinned;
        bool isIdle = true;
    };
    void present(const Content& content, const LedgerSnapshot& snapshot);
    void focusNames();
    /// A button that leaves, for where the editor stands in a dialog of its own.
    void showCancel();

Q_SIGNALS:
    void cancelWanted();
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
    TextLabel* m_iconHead = nullptr;
    IconGrid* m_icons = nullptr;
    QCheckBox* m_pin = nullptr;
    QPushButton* m_archive = nullptr;
    QPushButton* m_cancel = nullptr;
    PrimaryButton* m_save = nullptr;
};
