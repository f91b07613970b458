#pragma once

#include <string>

#include "LedgerCore/Domain/Records/Member.h"
#include "LedgerUI/Presentation/Company/MemberAccess.h"
#include "LedgerUI/Screens/Company/CompanyTab.h"

class AccessEditor;
class Banner;
class ElidedLabel;
class IconButton;
class PlainTable;
class PrimaryButton;
class QComboBox;
class QMenu;
class QPushButton;
class QSplitter;

/// The members, and below them the rights of the chosen one. What is changed stays until it is saved or reverted;
/// before another member is chosen, the person is asked.
class MembersTab final : public CompanyTab {
    Q_OBJECT
public:
    explicit MembersTab(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] std::vector<Action> actions() override;
    [[nodiscard]] PageView::StatusContext statusContext() const override;
    [[nodiscard]] QList<QWidget*> panes() const override;
    [[nodiscard]] std::size_t unsavedChanges() const override;
    void discardChanges() override { revert(); }

protected:
    void present() override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildLayout();
    QWidget* buildHead(QWidget* parent);
    void bind();
    void adopt();
    void presentMember();
    void presentRoles();
    void presentButtons();
    void edit(AccessDraft draft);
    void askThenChoose(const std::string& memberID);
    void take(const std::string& memberID);
    void revert();
    void save();
    void sendAccess();
    void toggleActive();
    void sendActive(bool isActive);

    Member m_saved; // as the draft began; without an identifier until there is one
    AccessDraft m_draft;
    bool m_wasShown = false;
    QSplitter* m_splitter = nullptr;
    PlainTable* m_table = nullptr;
    QWidget* m_editor = nullptr;
    ElidedLabel* m_name = nullptr;
    QComboBox* m_role = nullptr;
    QPushButton* m_active = nullptr; // deactivates or reactivates
    IconButton* m_more = nullptr;    // in its place where the window is narrow
    QMenu* m_menu = nullptr;
    QAction* m_activeAction = nullptr;
    QPushButton* m_revert = nullptr;
    PrimaryButton* m_save = nullptr;
    Banner* m_refusal = nullptr;
    AccessEditor* m_access = nullptr;
};
