#include "LedgerUI/Screens/Records/RecordInks.h"

#include <array>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"

RecordInks::RecordInks(const LedgerSnapshot& snapshot)
    : capital{entryKindColor(EntryKind::capital, snapshot)}, dividend{entryKindColor(EntryKind::dividend, snapshot)},
      due{entryKindColor(EntryKind::expense, snapshot)}
{
}

ThemeColor RecordInks::of(RecordTone tone) const
{
    switch (tone) {
    case RecordTone::plain:
        return Token::text;
    case RecordTone::quiet:
        return Token::text2;
    case RecordTone::faint:
        return Token::text3;
    case RecordTone::capital:
        return capital;
    case RecordTone::dividend:
        return dividend;
    case RecordTone::due:
        return due;
    }
    return Token::text;
}

ThemeColor RecordInks::ofPerson(std::size_t place)
{
    static constexpr std::array colors{Token::chart1, Token::chart2, Token::chart3,
                                       Token::chart4, Token::chart5, Token::chart6};
    return place < colors.size() ? colors[place] : Token::chartOther;
}
