#pragma once

#include <vector>

#include <QFrame>

#include "LedgerUI/Presentation/SignIn/SignInMode.h"

class CardButton;
class DemoIdentitySelection;
class LedgerStore;
class TextLabel;
struct SignInState;

/// The left half of the sign-in panel: the program's name, the ways to sign in, and the demonstration.
class SignInAside final : public QFrame {
    Q_OBJECT
public:
    explicit SignInAside(LedgerStore& store, QWidget* parent = nullptr);

    void present(const SignInState& state);
    [[nodiscard]] QList<QWidget*> modeButtons() const;
    [[nodiscard]] DemoIdentitySelection& demonstration() const { return *m_demonstration; }
    /// Marks the way that is gone, however it was chosen.
    void choose(SignInMode mode);

Q_SIGNALS:
    void modeChosen(SignInMode mode);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout(LedgerStore& store);
    void retranslate();

    TextLabel* m_tagline = nullptr;
    std::vector<CardButton*> m_modes;
    DemoIdentitySelection* m_demonstration = nullptr;
    TextLabel* m_demonstrationHint = nullptr;
};
