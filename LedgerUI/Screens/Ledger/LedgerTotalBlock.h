#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerStatement.h"
#include "LedgerUI/Theme/Token.h"

class TextLabel;

/// What the strip says of one currency, the most important figure last.
struct LedgerTotalFigures {
    struct Figure {
        enum class Kind { movement, balance }; // of movements a nought is a dash

        const char* name = "";
        std::optional<std::int64_t> minor;
        Token tone = Token::text;
        Kind kind = Kind::movement;
    };

    std::string currency;
    std::vector<Figure> figures; // at most four
};
/// What entries brought: in, out and net.
LedgerTotalFigures figuresOf(const LedgerTotal& total);
/// What happened on one account: opening, in, out and closing.
LedgerTotalFigures figuresOf(const LedgerStatement::Line& line);

/// One currency of the strip: its code and its last figure, and before that the others where there is room for them.
class LedgerTotalBlock final : public QWidget {
    Q_OBJECT
public:
    enum class Place { first, behindAnother };
    enum class Detail { all, lastAlone };

    explicit LedgerTotalBlock(Place place, QWidget* parent = nullptr);

    void present(const LedgerTotalFigures& total, Detail detail);

private:
    struct Figure {
        TextLabel* name = nullptr;
        TextLabel* amount = nullptr;
    };
    Figure addFigure();

    TextLabel* m_code = nullptr;
    std::array<Figure, 4> m_figures; // those that are not used are hidden; the last is made when it is first used
};

/// A figure in the language in force, or a quiet dash for none.
void presentTotalFigure(TextLabel& label, const std::string& currency, const LedgerTotalFigures::Figure& figure);
