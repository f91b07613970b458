#pragma once

#include "LedgerUI/Presentation/Entry/EntryFormContent.h"
#include "LedgerUI/Theme/Token.h"

/// The colour of a balance that saving leads to. Words beside it say the same.
inline Token balanceTone(EntryBalanceMark mark, Token plain = Token::text2)
{
    switch (mark) {
    case EntryBalanceMark::none:
        return plain;
    case EntryBalanceMark::negative:
        return Token::warn;
    case EntryBalanceMark::beyondLimit:
        return Token::danger;
    }
    return plain;
}
