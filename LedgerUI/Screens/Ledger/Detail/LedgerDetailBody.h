#pragma once

#include <functional>

#include <QWidget>

#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"
#include "LedgerUI/Theme/ThemeColor.h"

class QVBoxLayout;
class SelectableText;
class TextLabel;

/// The pieces that the detail pane is put together from, one below the other.
class LedgerDetailBody : public QWidget {
    Q_OBJECT
public:
    using Action = std::function<void()>;

    explicit LedgerDetailBody(QWidget* parent = nullptr);

    /// The amount in large figures of this colour, its code before it.
    void addAmount(const MoneyText& amount, const ThemeColor& ink, bool isReversed);
    SelectableText* addText(const QString& text, Token tone);
    void addLines(const std::vector<LedgerEntryDetail::Line>& lines);
    void addSection(const QString& title, const QString& count = {});
    void addLeg(const LedgerEntryDetail::Leg& leg, const QString& afterLabel);
    /// A receipt that opens where its row is pressed.
    void addReceipt(const LedgerEntryDetail::Receipt& receipt, const Action& open);
    void addButton(const QString& objectName, const QString& glyph, const QString& text, const Action& action);
    /// A label and a text that leads somewhere; without an action the text only stands there.
    void addLink(const QString& label, const QString& text, const Action& action);
    void addGroup(const QString& title);
    /// A name with its amounts at the right edge, one below the other; gives the labels of the amounts.
    std::vector<TextLabel*> addAccount(const QString& name, const std::vector<MoneyText>& amounts,
                                       const Action& action);
    std::vector<TextLabel*> addTotals(const std::vector<MoneyText>& amounts, const QString& label);
    /// A part of the page's own.
    void addPart(QWidget* part);
    void addGap(int height);
    void addLine();
    void finish();

protected:
    /// A balance: in red where money is owed.
    static void presentFigure(TextLabel& label, const MoneyText& amount);

private:
    QVBoxLayout* m_rows = nullptr;
};
