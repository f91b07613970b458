#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <QWidget>

#include "LedgerUI/Presentation/Ledger/LedgerAmounts.h"
#include "LedgerUI/Theme/Token.h"

class TextLabel;

/// One currency of the totals: its code and its net, and before the net what came and went where there is room for it.
class LedgerTotalBlock final : public QWidget {
    Q_OBJECT
public:
    enum class Place { first, behindAnother };
    enum class Detail { inOutAndNet, netAlone };

    explicit LedgerTotalBlock(Place place, QWidget* parent = nullptr);

    void present(const LedgerTotal& total, Detail detail);

private:
    struct Figure {
        TextLabel* name = nullptr;
        TextLabel* amount = nullptr;
    };
    Figure addFigure();
    static void present(const Figure& figure, const char* name, const std::string& currency,
                        const std::optional<std::int64_t>& minor, Token tone);

    TextLabel* m_code = nullptr;
    Figure m_incoming;
    Figure m_outgoing;
    Figure m_net;
};

/// An amount of a total in the language in force, or a quiet dash for none.
void presentTotalFigure(TextLabel& label, const std::string& currency, const std::optional<std::int64_t>& minor,
                        Token tone);
