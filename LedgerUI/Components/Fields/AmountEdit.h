#pragma once

#include <string>
#include <vector>

#include <QLineEdit>

#include "LedgerUI/Presentation/Forms/AmountTyping.h"

/// A large field for an amount in one currency: groups digits as they are typed, takes either language's form when
/// pasted, and writes the amount out when it is left. Arithmetic is worked out then too, or at once with Return or "=".
/// The key beside 0 on the number pad is the decimal separator. Undo and redo go through what stood in it, a run of
/// keys at a time.
class AmountEdit final : public QLineEdit {
    Q_OBJECT
public:
    explicit AmountEdit(QWidget* parent = nullptr);

    void setCurrency(const std::string& currency) { m_currency = currency; }
    /// Shows another text than the one that stands there; the caret goes to its end.
    void setAmount(const QString& text);
    /// Writes the amount out now, with arithmetic worked out, as leaving the field does.
    void settle();

Q_SIGNALS:
    void amountEdited(const QString& text);
    /// What was to be pasted is not one amount; the text stays as it was.
    void pasteRefused(PasteRefusal refusal);
    /// The keys went elsewhere; the text stays as it is.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void take(const QString& after);
    void display(const AmountText& amount);
    void remember(bool continuesRun);
    void step(std::vector<AmountText>& from, std::vector<AmountText>& to);

    std::string m_currency;
    AmountText m_amount;
    std::vector<AmountText> m_undone; // what stood before, the latest last
    std::vector<AmountText> m_redone;
    bool m_isInRun = false; // of single keys, which are undone together
};
