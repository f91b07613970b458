#include "LedgerUI/Presentation/Text/SavingText.h"

#include "LedgerUI/Presentation/Text/FileWords.h"
#include "LedgerUI/Presentation/Text/Words.h"

QString notSavedText(std::string_view locale, const QString& sentence, SavingProblem problem)
{
    const auto with = [&](std::string_view key) {
        return sentence + QLatin1Char('\n') + wordIn(locale, fileWords(), key);
    };
    switch (problem) {
    case SavingProblem::folderMissing:
        return with("folderMissing");
    case SavingProblem::notAllowed:
        return with("notAllowed");
    case SavingProblem::diskFull:
        return with("diskFull");
    case SavingProblem::other:
        return sentence;
    }
    return sentence;
}
