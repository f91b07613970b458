#include "LedgerUI/Screens/Workspace/CompanyAccessView.h"

#include <QCoro/QCoroTask>
#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/CompanyDirectory.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 520;

}

CompanyAccessView::CompanyAccessView(LedgerStore& store, QWidget* parent) : CommandForm{store, parent}
{
    setObjectName(QStringLiteral("joinCompanyDialog"));
    buildLayout();
    connect(this, &FormDialog::confirmed, this, &CompanyAccessView::proceed);
    connect(m_code, &QLineEdit::textEdited, this, &CompanyAccessView::edited);
    connect(m_code, &QLineEdit::returnPressed, this, &CompanyAccessView::proceed);
    present();
}

void CompanyAccessView::present()
{
    const auto& words = companyAccessWords();
    setWindowTitle(word(words, "joinTitle"));
    m_lead->setText(word(words, "joinLead"));
    m_field->setLabel(word(words, "code"));
    const auto atField = m_isMissing ? word(words, "codeRequired")
                         : m_refusal ? CompanyAccess::codeProblem(*m_refusal, locale())
                                     : QString{};
    m_field->error().present(atField);
    m_preview->setVisible(m_invitation.has_value());
    if (m_invitation)
        m_preview->setText(word(words, "preview", {m_invitation->companyName, m_invitation->email}));
    presentStanding({.stage = m_isBusy ? SubmissionStage::saving : SubmissionStage::editing,
                     .refusal = atField.isEmpty() ? m_refusal : std::nullopt,
                     .confirm = word(words, m_invitation ? "joinConfirm" : "check")});
}

QWidget& CompanyAccessView::firstField() const
{
    return *m_code;
}

void CompanyAccessView::buildLayout()
{
    auto* body = new QWidget(bodyPlace());
    m_lead = new TextLabel(TypeStep::body, Token::text2, body);
    m_lead->setWordWrap(true);
    m_code = new QLineEdit(body);
    m_code->setObjectName(QStringLiteral("joinCode"));
    m_code->setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    m_field = new FormField(m_code, body);
    m_preview = new TextLabel(TypeStep::section, Token::text, body);
    m_preview->setObjectName(QStringLiteral("joinPreview"));
    m_preview->setWordWrap(true);
    m_preview->hide();
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::fieldToField);
    rows->addWidget(m_lead);
    rows->addWidget(m_field);
    rows->addWidget(m_preview);
    rows->addStretch(1);
    setBody(body, dialogWidth);
}

void CompanyAccessView::proceed()
{
    if (m_isBusy || store().isBusy())
        return;
    m_refusal.reset();
    m_isMissing = CompanyAccess::codeIn(m_code->text()).empty();
    present();
    if (m_isMissing)
        m_code->setFocus();
    else if (m_invitation)
        UnsavedChanges::ask(*this, [this] { join(); }); // the workspace goes once the other company is open
    else
        look();
}

void CompanyAccessView::look()
{
    m_isBusy = true;
    present();
    QCoro::connect(store().previewInvitation(CompanyAccess::codeIn(m_code->text())), this,
                   [this](const Result<InvitationPreview>& preview) {
                       if (preview)
                           m_invitation = *preview;
                       finish(preview ? std::nullopt : std::optional{preview.error()});
                   });
}

void CompanyAccessView::join()
{
    m_isBusy = true;
    present();
    QCoro::connect(store().acceptCompanyInvitation(CompanyAccess::codeIn(m_code->text())), this,
                   [this](const Result<void>& joined) {
                       if (joined)
                           leave();
                       else
                           finish(joined.error());
                   });
}

void CompanyAccessView::finish(const std::optional<Failure>& failure)
{
    m_isBusy = false;
    // With the session the dialog closes, and what ended it is told elsewhere.
    if (!store().snapshot())
        return;
    if (failure) {
        m_invitation.reset();
        m_refusal = failure;
        store().dismissMessages(); // said here
    }
    present();
    m_code->setFocus();
}

void CompanyAccessView::edited()
{
    m_invitation.reset();
    m_refusal.reset();
    m_isMissing = false;
    present();
}
