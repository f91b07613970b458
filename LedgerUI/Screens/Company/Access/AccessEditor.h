#pragma once

#include <map>
#include <string_view>

#include <QWidget>

#include "LedgerUI/Presentation/Company/MemberAccess.h"

class GrantMatrixView;
class QCheckBox;
class TextLabel;

/// The rights of one person to be ticked: those in the whole company, and the matrix of those by account. It holds no
/// draft of its own; what a person ticks is announced as the draft that it would make.
class AccessEditor final : public QWidget {
    Q_OBJECT
public:
    /// `margin` is left free at both sides of what is not the matrix.
    explicit AccessEditor(int margin, QWidget* parent = nullptr);

    void present(const Member& saved, const AccessDraft& draft, const LedgerSnapshot& snapshot);
    [[nodiscard]] GrantMatrixView& matrix() const { return *m_matrix; }

Q_SIGNALS:
    void changed(const AccessDraft& draft);

private:
    void buildLayout(int margin);
    void bind();
    void presentPermissions(const Member& saved, const LedgerSnapshot& snapshot);
    void presentHint();

    AccessDraft m_shown;
    std::map<std::string_view, QCheckBox*> m_permissions;
    TextLabel* m_permissionsHead = nullptr;
    GrantMatrixView* m_matrix = nullptr;
    QWidget* m_foot = nullptr;
    TextLabel* m_hint = nullptr; // why the current cell cannot be changed
};
