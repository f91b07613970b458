#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Forms/AccountChoice.h"
#include "LedgerUI/Presentation/Forms/Submission.h"
#include "LedgerUI/Presentation/Period/DayTyping.h"
#include "LedgerUI/Presentation/Records/RecordFigure.h"

/// The parts of the forms for capital and dividends, in the order in which they stand.
enum class RecordPart {
    person,
    name,
    member,
    ratio,
    archived,
    period,
    currency,
    batch,
    advance,
    throughDate,
    startDate,
    people, // the table with a row per person
    zero,
    account,
    amount,
    note
};

/// What a person changed in one part: a text or the identifier of a choice; in the table also whose row.
struct RecordEdit {
    RecordPart part = RecordPart::note;
    std::string text = {};
    std::string personID = {};
    bool isOn = false; // of a tick
};

struct RecordChoice {
    std::string id;
    QString text;

    bool operator==(const RecordChoice&) const = default;
};

/// One field of a form, as it is shown.
struct RecordField {
    enum class Kind { text, amount, choice, account, day, tick, fixed };

    RecordPart part = RecordPart::note;
    Kind kind = Kind::text;
    QString label = {};
    QString value = {};      // what is typed, or stands there fixed
    std::string chosen = {}; // of a choice
    std::vector<RecordChoice> choices = {};
    std::vector<AccountChoice> accounts = {};
    std::string currency = {}; // of an amount
    QString prompt = {};       // while nothing is chosen
    QString hint = {};
    QString message = {}; // what is wrong
    DayContent day = {};
    bool isOn = false;     // of a tick
    bool isHalf = false;   // two halves share a row
    std::size_t limit = 0; // the most characters of a text
};

/// A person's row in the table of a form.
struct RecordLine {
    std::string id;
    QString name = {};
    QString beside = {}; // the member whom the person is, or what the newest records say
    std::optional<std::size_t> swatch = {};
    std::optional<bool> isIn = {}; // where people can be left out
    QString typed = {};
    QString mark = {};   // what was added for the remainder
    QString amount = {}; // as it was worked out
    QString message = {};
};

struct RecordLines {
    QString personHead = {};
    QString besideHead = {};
    QString typedHead = {};
    QString amountHead = {}; // empty where nothing is worked out
    std::vector<RecordLine> lines = {};
    QString total = {};
    QString amountTotal = {};
    bool isWhole = true; // else the total is wrong
    QString message = {};
    std::string currency = {}; // of typed amounts; empty for percentages
};

/// Everything that a form for capital or dividends shows.
struct RecordFormContent {
    QString title = {};
    QString explanation = {};
    std::vector<RecordFigure> equation = {};
    std::vector<RecordField> fields = {};
    std::optional<RecordLines> lines = {};
    QString preview = {}; // what the command does: of the one that would be sent, or that was
    QString hint = {};
    QString confirm = {};
    QString foot = {};
    QString whyNotConfirm = {}; // said by the button
    QString problem = {};       // what is wrong with the form as a whole
    QString notice = {};        // what the form has done by itself
    QString conflict = {};      // the records have changed; offers to load the newest
    QString reload = {};        // what the button for it says
    bool hasChanges = false;
};
