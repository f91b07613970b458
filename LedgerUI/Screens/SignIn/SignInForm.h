#pragma once

#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/SignIn/SignInProblem.h"

class ChoiceField;
class ElidedLabel;
class FormField;
class PrimaryButton;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class TextLabel;
struct SignInState;

/// The fields of one page of the sign-in screen and the button that sends them.
class SignInForm final : public QWidget {
    Q_OBJECT
public:
    explicit SignInForm(SignInPage page, QWidget* parent = nullptr);

    [[nodiscard]] SignInPage page() const { return m_page; }
    /// What is filled in, as it is sent.
    [[nodiscard]] SignInDraft draft() const;
    void setText(SignInField field, const QString& text);
    /// Takes away what nobody else should come to see.
    void clearSecrets();
    /// A sentence above the fields, and something that stands out below it.
    void setLead(const QString& text, const QString& name);
    /// At the right of the main button.
    QPushButton* addLink(const QString& name);

    void present(const SignInState& state);
    /// Each problem under its field, and the focus on the first.
    void complain(const std::vector<SignInProblem>& problems);
    /// To the first empty field.
    void focusStart();
    void focusFirst();
    /// The controls from top to bottom.
    [[nodiscard]] QList<QWidget*> tabStops() const;

Q_SIGNALS:
    void submitted();

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Entry {
        SignInFieldRow row;
        QWidget* control = nullptr;
        FormField* field = nullptr;
    };

    void buildLayout();
    QWidget* makeControl(SignInField field);
    void presentCountries();
    void presentProblems();
    void withdraw(SignInField field);
    void retranslate();
    [[nodiscard]] const Entry* entry(SignInField field) const;
    [[nodiscard]] QLineEdit* edit(SignInField field) const;
    [[nodiscard]] std::string text(SignInField field) const;
    [[nodiscard]] static bool isEmpty(const Entry& entry);

    SignInPage m_page;
    TextLabel* m_lead = nullptr;
    ElidedLabel* m_leadName = nullptr;
    std::vector<Entry> m_entries;
    ChoiceField* m_countries = nullptr;
    TextLabel* m_note = nullptr;
    PrimaryButton* m_submit = nullptr;
    QHBoxLayout* m_buttons = nullptr;
    std::vector<QPushButton*> m_links;
    TextLabel* m_beside = nullptr;
    TextLabel* m_hint = nullptr;
    std::vector<SignInProblem> m_problems;
    bool m_isSending = false;
};
