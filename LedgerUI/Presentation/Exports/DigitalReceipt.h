#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QRgb>
#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"

/// What a person shows of an entry beside what is always on its receipt, and in which language.
struct DigitalReceiptChoice {
    std::string locale;
    bool showsAccount = true;
    bool showsNote = true;
    bool showsRecorder = true;

    bool operator==(const DigitalReceiptChoice&) const = default;
};

/// An entry as it is shown to others. Holds no balance, no e-mail address and nothing that was not chosen.
struct DigitalReceipt {
    struct Line {
        QString label;
        QString value;

        bool operator==(const Line&) const = default;
    };

    QString title; // "Digital receipt"
    QString company;
    QString glyph; // of the kind, in its colour
    QRgb kindColor = 0;
    QString kindTitle; // says so where the entry is reversed
    bool isReversed = false;
    std::vector<MoneyText> amounts;
    QString category; // empty where the kind says all
    std::vector<Line> lines;
    QString foot;
    QString fileName; // that a saved one is offered under, without an ending
};

namespace DigitalReceipts {

/// The receipt of an entry of these books, made on `today`.
DigitalReceipt of(const LedgerTransaction& entry, const LedgerSnapshot& snapshot, const DigitalReceiptChoice& choice,
                  std::string_view today);

/// Everything that can be read on it, line by line.
QString text(const DigitalReceipt& receipt);

}
