#pragma once

#include <vector>

#include <QFrame>

class CardButton;
class LedgerStore;
class QActionGroup;
class QPushButton;
class TextLabel;
struct SignInState;

/// The left half of the sign-in panel: the program's name, the ways to sign in, and the demonstration.
class SignInAside final : public QFrame {
    Q_OBJECT
public:
    explicit SignInAside(LedgerStore& store, QWidget* parent = nullptr);

    void present(const SignInState& state);
    [[nodiscard]] QList<QWidget*> modeButtons() const;
    [[nodiscard]] QWidget* demonstrationButton() const;

Q_SIGNALS:
    /// An index into signInModes.
    void modeChosen(int index);
    /// Emitted before the request, as by the forms.
    void submitting();
    void addressRefused(const QString& message);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void buildDemonstrationMenu();
    void startDemonstration(const std::string& profile);
    void retranslate();

    LedgerStore& m_store;
    TextLabel* m_tagline = nullptr;
    std::vector<CardButton*> m_modes;
    QPushButton* m_demonstration = nullptr;
    TextLabel* m_demonstrationHint = nullptr;
    QActionGroup* m_profiles = nullptr;
};
