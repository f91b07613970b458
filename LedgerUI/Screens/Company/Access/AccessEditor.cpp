#include "LedgerUI/Screens/Company/Access/AccessEditor.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Company/Access/GrantMatrixView.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int checkGap = 12;

}

AccessEditor::AccessEditor(int margin, QWidget* parent) : QWidget{parent}
{
    buildLayout(margin);
    bind();
}

void AccessEditor::buildLayout(int margin)
{
    m_permissionsHead = new TextLabel(TypeStep::small, Token::text2, this);
    auto* checks = new QWidget(this);
    auto* wrap = new WrapLayout(checks, checkGap);
    wrap->setContentsMargins(0, 0, 0, 0);
    for (const auto permission : Permission::all) {
        auto* check = new QCheckBox(checks);
        check->setObjectName(QStringLiteral("permission.") + qString(permission));
        wrap->addWidget(check);
        m_permissions[permission] = check;
    }
    m_matrix = new GrantMatrixView(this);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setObjectName(QStringLiteral("grantHint"));
    m_hint->setWordWrap(true);

    auto* top = new QVBoxLayout;
    top->setContentsMargins(margin, 0, margin, Space::step3);
    top->setSpacing(Space::step2);
    top->addWidget(m_permissionsHead);
    top->addWidget(checks);
    m_foot = new QWidget(this);
    auto* foot = new QVBoxLayout(m_foot);
    foot->setContentsMargins(margin, Space::step1, margin, Space::step1);
    foot->addWidget(m_hint);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(top);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(m_matrix, 1);
    rows->addWidget(m_foot);
}

void AccessEditor::bind()
{
    for (const auto& [permission, check] : m_permissions) {
        connect(check, &QCheckBox::clicked, this, [this, name = permission](bool isGiven) {
            auto draft = m_shown;
            if (isGiven)
                draft.permissions.emplace(name);
            else
                draft.permissions.erase(std::string{name});
            Q_EMIT changed(draft);
        });
    }
    connect(m_matrix, &GrantMatrixView::toggleWanted, this, [this](std::size_t row, std::size_t column) {
        Q_EMIT changed(GrantMatrix::toggled(m_shown, m_matrix->rows(), row, column));
    });
    connect(m_matrix, &GrantMatrixView::rowToggleWanted, this,
            [this](std::size_t row) { Q_EMIT changed(GrantMatrix::rowToggled(m_shown, m_matrix->rows(), row)); });
    connect(m_matrix, &GrantMatrixView::columnToggleWanted, this, [this](std::size_t column) {
        Q_EMIT changed(GrantMatrix::columnToggled(m_shown, m_matrix->rows(), column));
    });
    connect(m_matrix, &GrantMatrixView::currentMoved, this, &AccessEditor::presentHint);
}

void AccessEditor::present(const Member& saved, const AccessDraft& draft, const LedgerSnapshot& snapshot)
{
    m_shown = draft;
    m_permissionsHead->setText(word(accessWords(), "permissions"));
    presentPermissions(saved, snapshot);
    const auto& locale = InterfaceLanguage::tag();
    m_matrix->setAccessibleName(word(companyWords(), "matrix", {saved.name}));
    m_matrix->present(word(accessWords(), "grants"), GrantMatrix::heads(locale),
                      GrantMatrix::rows(saved, draft, snapshot, locale));
    presentHint();
}

void AccessEditor::presentPermissions(const Member& saved, const LedgerSnapshot& snapshot)
{
    const auto before = MemberAccess::draftOf(saved);
    for (const auto& [permission, check] : m_permissions) {
        check->setText(word(accessWords(), "permission." + std::string{permission}));
        const bool isGiven = m_shown.permissions.contains(permission);
        check->setChecked(isGiven);
        // What was changed here can always be changed back.
        const bool isChanged = isGiven != before.permissions.contains(permission);
        const auto refusal = isChanged ? std::nullopt : MemberAccess::whyNotPermission(saved, permission, snapshot);
        check->setEnabled(!refusal);
        const auto reason = refusal ? MemberAccess::refusalText(*refusal, InterfaceLanguage::tag()) : QString{};
        check->setToolTip(reason);
        check->setAccessibleDescription(reason);
    }
}

void AccessEditor::presentHint()
{
    const bool isEmpty = m_matrix->rows().empty();
    m_hint->setText(isEmpty ? word(accessWords(), "noAccounts") : m_matrix->whyNot());
    m_foot->setVisible(!m_hint->text().isEmpty());
}
