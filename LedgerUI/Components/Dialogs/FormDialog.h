#pragma once

#include <functional>
#include <optional>

#include <QDialog>

class Banner;
class PrimaryButton;
class QHBoxLayout;
class QPushButton;
class QScrollArea;
class QSpacerItem;
enum class Command;

/// The frame of every form: a body that scrolls when it must, a banner above it, and a foot with Cancel and the one
/// action. Ctrl+Return confirms, Return presses the button in focus and no other; Esc, Cancel and the close button ask
/// first when the draft has changed.
class FormDialog : public QDialog {
    Q_OBJECT
public:
    /// Whether Cancel stays usable while the request runs; blocked where leaving could lose its outcome.
    enum class Leaving { allowed, blocked };

    explicit FormDialog(QWidget* parent);
    ~FormDialog() override;

    /// The form itself, at its left `width` pixels wide; the dialog is never wider than Space::dialogMaximumWidth. Made
    /// as a child of `bodyPlace()`, since whatever changes its parent is dressed once more with all that it holds.
    void setBody(QWidget* body, int width);
    [[nodiscard]] QWidget* bodyPlace() const;
    /// The body begins at the upper edge of the window, and has what margins it needs itself.
    void setBodyFlush();
    /// A second column at the right, on its own ground.
    void setAside(QWidget* aside, int width);
    /// At the left of the foot, in the room that the buttons leave.
    void setFootPart(QWidget* part);
    /// Another way to go on, before the main button, and on its own keys where it has any; off while the fields are.
    void setSecondary(QPushButton* button, std::optional<Command> keys = {});
    void setConfirmText(const QString& text);
    void setConfirmVisible(bool isVisible);
    /// Answers whether leaving would lose something.
    void setHasChanges(std::function<bool()> hasChanges);
    /// Texts of the question asked before leaving, where the usual ones do not fit.
    void setLeaveQuestion(const QString& title, const QString& text, const QString& leave, const QString& stay);

    /// Disables the fields and shows the busy text on the main button.
    void setBusy(bool isBusy, Leaving leaving = Leaving::allowed);
    /// Disables the fields, whose content is settled; the buttons stay.
    void setLocked(bool isLocked);
    [[nodiscard]] bool isBusy() const { return m_isBusy; }

    [[nodiscard]] Banner& banner() const { return *m_banner; }
    [[nodiscard]] PrimaryButton& confirmButton() const { return *m_confirm; }
    [[nodiscard]] QPushButton& cancelButton() const { return *m_cancel; }

    /// Whether leaving would lose something.
    [[nodiscard]] bool wouldLose() const { return m_hasChanges && m_hasChanges(); }
    /// Leaves without asking.
    void leave() { QDialog::reject(); }
    void reject() override;

Q_SIGNALS:
    void confirmed();
    /// A person closes the form without its command accepted, after the question where there is one.
    void givenUp();

protected:
    enum class Fit { exactly, following };
    /// As high as the form needs, within the window behind. A form whose content changes calls it to follow: it grows,
    /// and gives the height back that it took, but never what a person gave it by hand.
    void fitWindow(Fit fit);
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildFoot();
    void enableFields();
    void confirm();
    void spaceBanner();
    [[nodiscard]] int topMargin() const;
    void arrangeFocus();
    [[nodiscard]] QRect roomFor(Fit fit) const;
    [[nodiscard]] int footHeight(int width) const;
    void moveInto(const QRect& room);
    void settleScrolling();
    void revealFocus();
    void retranslate();

    struct LeaveTexts {
        QString title;
        QString text;
        QString leave;
        QString stay;
    };

    QHBoxLayout* m_columns = nullptr;
    QScrollArea* m_scroll = nullptr;
    Banner* m_banner = nullptr;
    QHBoxLayout* m_bannerRow = nullptr;
    QSpacerItem* m_top = nullptr;
    QWidget* m_aside = nullptr;
    QWidget* m_foot = nullptr;
    QHBoxLayout* m_footRow = nullptr;
    QWidget* m_footPart = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_secondary = nullptr;
    PrimaryButton* m_confirm = nullptr;
    QString m_confirmText;
    std::function<bool()> m_hasChanges;
    LeaveTexts m_leaveTexts;
    int m_bodyWidth = 0;
    int m_fittedHeight = 0; // as the form set it last
    bool m_isSizedByHand = false;
    bool m_isFlush = false;
    bool m_isBusy = false;
    bool m_isLocked = false;
    bool m_mayLeave = true;
};
