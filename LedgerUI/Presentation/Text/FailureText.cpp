#include "LedgerUI/Presentation/Text/FailureText.h"

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& failureWords()
{
    static const WordTable table{
        {"noRoom", "账本服务的存储空间已满。请联系服务的管理者释放空间，然后重试。",
         "Ruang penyimpanan layanan buku penuh. Minta pengelola layanan menyediakan ruang, lalu coba lagi.",
         "Dịch vụ sổ sách đã hết dung lượng. Hãy nhờ người quản lý dịch vụ giải phóng dung lượng rồi thử lại.",
         "The ledger service has no room left. Ask whoever runs it to make room, then try again."},
    };
    return table;
}

QString FailureText::advice(const Failure& failure, std::string_view locale)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && error->code == ServiceCode::insufficientStorage ? wordIn(locale, failureWords(), "noRoom")
                                                                    : QString{};
}

QString FailureText::unconfirmed(const QString& words, const std::optional<Failure>& failure, std::string_view locale)
{
    const auto advised = failure ? advice(*failure, locale) : QString{};
    return advised.isEmpty() ? words : words + QLatin1Char{'\n'} + advised;
}

QString FailureText::of(const LedgerStore& store, const Failure& failure, std::string_view locale)
{
    const auto advised = advice(failure, locale);
    return advised.isEmpty() ? qString(store.friendly(failure, std::string{locale})) : advised;
}

QString FailureText::ofSaving(std::string_view locale, const QString& sentence, SavingProblem problem)
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
